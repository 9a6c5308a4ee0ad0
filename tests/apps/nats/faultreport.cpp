// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/nats/faultreport.h>

#include <platform/nats/natsbusmaker.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

int Kills() {
    constexpr int Few = 3;
    return IsLong() ? qEnvironmentVariableIntValue("MCS_NATS_KILLS") : Few;
}

bool IsLong() {
    return qEnvironmentVariableIntValue("MCS_NATS_KILLS") > 0;
}

void Report(const char* what, const FaultStage& stage, std::vector<FaultStage::Time> pauses) {
    std::sort(pauses.begin(), pauses.end());
    const auto middle = pauses.empty() ? FaultStage::Time(0) : pauses[pauses.size() / 2];
    const auto longest = pauses.empty() ? FaultStage::Time(0) : pauses.back();
    std::printf("%-46s pause p50 %5d ms, longest %5d ms; %d sessions lost, %d of %d occurrences missed\n",
                what, static_cast<int>(middle.count()), static_cast<int>(longest.count()),
                stage.CountLosses(), stage.CountMissed(), stage.CountSent());
    std::fflush(stdout);
}

std::shared_ptr<nats::INatsBus> OpenBus(const nats::NatsOptions& options) {
    QString problem;
    auto bus = nats::MakeBus(options, &problem);
    bus->Open(true);
    EXPECT_TRUE(WaitUntil([&] { return bus->State() == nats::INatsBus::EState::Open; }));
    return bus;
}
