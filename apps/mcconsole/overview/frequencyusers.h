// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/emcscontroltreesegments.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/pathbinding.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <map>
#include <memory>
#include <vector>

/// Which MpxORV is tuned to which frequency. Main thread.
class FrequencyUsers : public QObject, private IObserver, private PathBinding::IListener {
    Q_OBJECT

  public:
    struct User {
        QString name;
        double hz = 0;
        bool isMaster = false;
        QString since;  ///< as the server writes it; empty if it does not
    };

    explicit FrequencyUsers(QObject* parent = nullptr);
    ~FrequencyUsers() override;

    /// Looks at those of \a segments below \a basePath.
    void Bind(const QString& basePath, EMCSControlTreeSegments segments);

    /// Those that are tuned.
    std::vector<User> Find() const;

  Q_SIGNALS:
    /// There may be others; told often, so whoever shows them does it later.
    void Changed();

  private:
    /// One MpxORV.
    struct Watch;

    void Update(Observable* source, TChangeCode code) override;
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void WatchAll();

    std::vector<Observation<values::Node>> m_segments;
    std::map<QString, std::unique_ptr<Watch>> m_watches;  ///< by path
};
