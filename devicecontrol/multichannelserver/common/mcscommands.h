// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/values/observable.h>
#include <platform/values/value.h>

#include <QtCore/QString>

/// The commands node of the server's tree: what an operator or client tells the server to do. Provides the
/// values; whoever carries the commands out observes them. Main thread.
class MCS_COMMON_EXPORT MCSCommands : public IObserver {
  public:
    /// Finds or creates the values under \a basePath. Null means the configuration node, not the commands
    /// node. (fixed: commands-below-config)
    explicit MCSCommands(const QString* basePath);
    ~MCSCommands() override;
    MCSCommands(const MCSCommands&) = delete;
    MCSCommands& operator=(const MCSCommands&) = delete;

    /// Whether the server shall hold its connection to the device. Null after the value went away.
    virtual values::Value<bool>* GetShallBeConnectedValue() const;
    virtual QString GetShallBeConnected_ValuePath();

  protected:
    void Update(Observable* source, TChangeCode code) override;

  private:
    struct Fields;  ///< the table of the values

    QString m_basePath;
    values::Value<bool>* m_pShallBeConnected = nullptr;
};
