// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/mpxorv/ituningguard.h>

#include <devicecontrol/multichannelserver/common/gts/blankingsource.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>

#include <QtCore/QString>

#include <functional>
#include <map>
#include <utility>

class JobControl;
class SuppressionPlant;

/// Keeps frequencies that ground transmitters use right now from the MpxORVs: refuses to tune to them, says
/// which module and input it is, and has those who are tuned to one lose it. Needs the suppression's modules
/// in the tree. Main thread.
class BlankingGuard : public ITuningGuard, private IObserver {
  public:
    /// Guards \a jobs from now on, until it is destroyed. None is owned; \a plant knows what people call the
    /// inputs.
    BlankingGuard(JobControl& jobs, const SuppressionPlant& plant, IClock& clock);
    ~BlankingGuard() override;
    BlankingGuard(const BlankingGuard&) = delete;
    BlankingGuard& operator=(const BlankingGuard&) = delete;

    /// Is told which input kept a frequency from which MpxORV, whenever one does.
    using Witness = std::function<void(const BlankingSource& source, const QString& mpxOrv)>;
    void SetWitness(Witness witness) { m_witness = std::move(witness); }

    CodedText RefusalOf(MpxOrv& mpxOrv, double hz) override;
    bool IsUnsupervised(double hz) const override;

  private:
    void Update(Observable* source, TChangeCode code) override;
    void ObserveModules();
    void Observe(values::TreeItem* item);
    /// Looks again at who is tuned to what, once all who know the modules have been told of the change.
    void CheckSoon();

    JobControl& m_jobs;
    const SuppressionPlant& m_plant;
    ClockTimer m_check;
    Witness m_witness;
    Observation<values::Node> m_modules;  ///< the node that has them
    /// What the modules say.
    std::map<const Observable*, Observation<values::ValueBase>> m_observed;
};
