// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/suppression/keyingrecorder.h>
#include <apps/pages/suppression/suppressionstate.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/pathbinding.h>
#include <platform/values/value.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <map>
#include <vector>

/// Follows what a server tells of its suppression, wherever that stands in the tree, and remembers what the
/// inputs did. GUI thread.
class SuppressionFollower : public QObject, private PathBinding::IListener, private IObserver {
    Q_OBJECT

  public:
    explicit SuppressionFollower(QObject* parent = nullptr);
    ~SuppressionFollower() override;

    /// \a path is that of the node; empty for none.
    void Follow(const QString& path);
    const SuppressionState& GetState() const { return m_state; }
    const IKeyingHistory& GetHistory() const { return m_history; }

  Q_SIGNALS:
    /// The state is another one. Several changes in a row are told once.
    void Changed();

  private:
    /// Of one module, what its inputs are judged by. The tree owns the values.
    struct Tracked {
        int number = 0;
        const values::Value<QString>* state = nullptr;
        std::vector<const values::Value<bool>*> keyed;
    };
    struct Held {
        Observation<values::ValueBase> value;
        int module = -1;  ///< in m_tracked; -1 for a value that is only shown
    };

    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void Update(Observable* source, TChangeCode code) override;
    void Forget();
    void LookSoon(bool isStructure);
    void Look();
    void Attach();
    void AttachAll(values::Node& node);
    void Track(values::Node& module);
    void Hold(values::TreeItem* item, int module);
    void Record(const Tracked& module);
    SuppressionState Read() const;

    PathBinding m_count;               ///< a value that is there whenever the server tells of it
    Observation<values::Node> m_node;  ///< that it stands in
    std::map<const Observable*, Held> m_held;
    std::vector<Tracked> m_tracked;
    bool m_isAttached = false;
    QTimer m_look;
    SuppressionState m_state;
    KeyingRecorder m_history;
};
