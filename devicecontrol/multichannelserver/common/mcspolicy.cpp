// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicy.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

// Built at start-up in this order: the registry before those that enter themselves in it.
QMap<QString, MCSPolicy*> MCSPolicy::s_NameMCSPolicyMap;

// clang-format off
const MCSPolicy MCSPolicy::ISSLAVETOMASTERJOB(mcskeys::IsSlaveToMasterJob);
const MCSPolicy MCSPolicy::MAYALTERDEVICESETTINGS(mcskeys::MayAlterDeviceSettings);
const MCSPolicy MCSPolicy::MAYALTERFREQRANGES(mcskeys::MayAlterFreqRanges);
const MCSPolicy MCSPolicy::MAYALTERFREQSINGLE(mcskeys::MayAlterFreqSingle);
const MCSPolicy MCSPolicy::MAYBEJOBMASTER(mcskeys::MayBeJobMaster);
const MCSPolicy MCSPolicy::MAYBIT(mcskeys::MayBIT);
const MCSPolicy MCSPolicy::MAYCAL(mcskeys::MayCal);
const MCSPolicy MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES(mcskeys::MayReadSingleFreqFromMasterRanges);
const MCSPolicy MCSPolicy::MAYRESTARTJOB(mcskeys::MayRestartJob);
const MCSPolicy MCSPolicy::SEESMASTERJOBRF(mcskeys::SeesMasterJobRf);
// clang-format on

MCSPolicy::MCSPolicy(const QString& name) : m_name(name) {
    s_NameMCSPolicyMap.insert(name, this);
}

MCSPolicy* MCSPolicy::PolicyByName(const QString& name) {
    return s_NameMCSPolicyMap.value(name, nullptr);
}
