// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QString>

class ModuleChanges;
class ServerLog;
class SuppressionPlant;

/// A command of the server's tree that connects the data modules in error anew: an operator may be far from
/// the server's window, or it has none. Main thread.
class ReconnectCommand : private IObserver {
  public:
    /// None is owned; \a changes tells who has had it done.
    ReconnectCommand(SuppressionPlant& plant, ServerLog& log, ModuleChanges& changes);

    /// Where it is: a push button, which is false again once it was carried out.
    static QString Path();

  private:
    CodedText Report() const;
    void Update(Observable* source, TChangeCode code) override;

    SuppressionPlant& m_plant;
    ServerLog& m_log;
    ModuleChanges& m_changes;
    Observation<values::Value<bool>> m_button;
};
