// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionduties.h>

#include <apps/mcserver/mpxorv/jobcontrol.h>

#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <cmath>
#include <set>

SuppressionDuties::SuppressionDuties(SuppressionPlant& plant, const SuppressionRecovery& recovery,
                                     JobControl& jobs, ServerLog& log, IClock& clock)
    : m_plant(plant),
      m_log(log),
      m_changes(plant, log, clock),
      m_status(&plant, clock),
      m_guard(jobs, plant, clock),
      m_reconnect(plant, log, m_changes),
      m_recorder(plant, recovery, log, clock) {
    m_plant.SetListener(&m_log);
    // Who is tuned there would learn from the log only that nobody watches over it.
    const auto tell = [&jobs](ECode kind, ECode what, const std::set<double>& hertz, ECode by,
                              const CodedText& who) {
        jobs.TellTuned(kind, [&](double hz) {
            if (hertz.count(std::floor(hz)) == 0) return CodedText();
            return CodedText(what, {MCSTools::FormatFrequency(hz), {by, {who}}});
        });
    };
    m_changes.SetOnCovered([tell](const ModuleChanges::Coverage& coverage) {
        tell(ECode::Ended, ECode::SupervisionEnded, coverage.lost, ECode::TakenAwayBy, coverage.who);
        tell(ECode::Done, ECode::SupervisionWanted, coverage.gained, ECode::By, coverage.who);
    });
    m_guard.SetWitness([this](const BlankingSource& source, const QString& mpxOrv) {
        m_status.NoteBlanked(source.module, source.input, mpxOrv);
    });
}

SuppressionDuties::~SuppressionDuties() {
    m_plant.SetListener(nullptr);
}
