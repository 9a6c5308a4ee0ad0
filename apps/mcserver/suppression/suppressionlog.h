// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>

class ServerLog;

/// Writes to the server's log what becomes of the data modules, in English as the rest of it, whatever
/// language the displays have. Each module is a source of its own: one that fails with every poll leaves room
/// for the others. Main thread.
class SuppressionLog : public ISuppressionListener {
  public:
    explicit SuppressionLog(ServerLog& log) : m_log(log) {}

    void OnModuleFailed(const ModuleFailure& failure) override;
    void OnModuleAnswersAgain(const ModuleIdentity& module) override;

  private:
    ServerLog& m_log;
};
