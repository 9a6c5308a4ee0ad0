// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observation.h>
#include <platform/values/valuebase.h>

#include <QtCore/QString>

#include <map>

class ServerLog;

/// Tells as an event which key of the configuration was changed from what to what, and by whom. What may be a
/// secret is not told, only that it was changed. Main thread; needs the tree.
class ConfigChanges : public IObserver {
  public:
    /// The log outlives this.
    explicit ConfigChanges(ServerLog& log) : m_log(log) {}

    /// From now on, the values that are directly below the node at \a basePath.
    void Begin(const QString& basePath);

    void Update(Observable* source, TChangeCode code) override;

  private:
    struct Key {
        QString name;
        QString content;  ///< as it was told last
        Observation<values::ValueBase> value;
    };
    void Tell(Key& key);

    ServerLog& m_log;
    std::map<Observable*, Key> m_keys;
};
