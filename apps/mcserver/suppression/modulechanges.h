// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/common/codedtext.h>

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>
#include <devicecontrol/multichannelserver/common/gts/modulestate.h>

#include <QtCore/QObject>

#include <functional>
#include <map>
#include <set>
#include <utility>

class ServerLog;
class SuppressionPlant;

/// Tells as events what people do to the data modules: which come and go, which are disconnected and
/// connected anew, what is set of them from what to what, and who did it. Goes before the plant does; main
/// thread.
class ModuleChanges : public QObject {
    Q_OBJECT

  public:
    /// What is there already is no event. \a plant and \a log are not owned, and outlive this.
    ModuleChanges(SuppressionPlant& plant, ServerLog& log, IClock& clock);

    /// Which frequencies, in whole hertz, no module has any more, and which one has that none had, and who
    /// did that.
    struct Coverage {
        std::set<double> lost;
        std::set<double> gained;
        CodedText who;
    };
    using Covered = std::function<void(const Coverage& coverage)>;
    void SetOnCovered(Covered covered) { m_onCovered = std::move(covered); }

    /// Whoever writes now has the modules in error connected anew, which answer later.
    void NoteReconnect();

  private:
    struct Known {
        ModuleSettings settings;
        EModuleState state = EModuleState::Disconnected;
        bool isSwitchedOff = false;
    };
    using Modules = std::map<int, Known>;  ///< by number

    Modules Read() const;
    static std::set<double> CoveredBy(const Modules& modules);
    void OnStates();
    void LookSoon();
    void Look();
    void TellCoverage(const Modules& before) const;
    void TellState(int number, const Known& before, const Known& now);
    void TellSettings(const ModuleSettings& before, const ModuleSettings& now);
    void TellInputs(const ModuleSettings& before, const ModuleSettings& now);
    CodedText Who() const;
    void Tell(ECode code, const ModuleSettings& module) { Tell(code, module, Who()); }
    void Tell(ECode code, const ModuleSettings& module, const CodedText& who);
    void TellChange(const ModuleSettings& module, const CodedText& what, const CodedText& from,
                    const CodedText& to);

    SuppressionPlant& m_plant;
    ServerLog& m_log;
    ClockTimer m_look;
    Covered m_onCovered = [](const Coverage&) {};
    CodedText m_who;  ///< who does what is looked at next
    Modules m_modules;
    std::map<int, CodedText> m_reconnecting;  ///< who had those in error connected anew, by number
};
