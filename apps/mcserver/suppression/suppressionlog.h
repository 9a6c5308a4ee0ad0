// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>

#include <QtCore/QString>

#include <map>
#include <set>

class ServerLog;

/// Writes to the server's log what becomes of the data modules, in English as the rest of it, whatever
/// language the displays have. Each module is a source of its own: one that fails with every poll leaves room
/// for the others. Among the events a failure is told once, and again for another reason, until the module
/// answers or is connected anew: one that is lost would leave no room for anything else. Main thread.
class SuppressionLog : public ISuppressionListener {
  public:
    static constexpr std::size_t MaxReasons = 8;  ///< of one failure that are told as events

    explicit SuppressionLog(ServerLog& log) : m_log(log) {}

    void OnModuleFailed(const ModuleFailure& failure) override;
    void OnModuleAnswersAgain(const ModuleIdentity& module) override;

  private:
    bool IsTold(const ModuleFailure& failure) const;

    ServerLog& m_log;
    std::map<QString, std::set<QString>> m_told;  ///< reasons by module, as long as it fails
};
