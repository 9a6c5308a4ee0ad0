// SPDX-License-Identifier: Apache-2.0
#include "streamplay.h"

namespace bench {

namespace {

constexpr StreamSize sizes[] = {
    {"ours", 200000, 4000000},       {"raw", 200000, 4000000}, {"remoteobjects", 20000, 400000},
    {"remotesignal", 20000, 600000}, {"mqtt", 10000, 150000},
};

Row RateRow(const char* peerName, const char* peer, Row::ELimit limit, double bound) {
    return {QStringLiteral("every change of 1,000 values to 1 client"),
            QStringLiteral("M/s"),
            1e-6,
            StreamKey(1, "ours", "rate"),
            QLatin1String(peerName),
            StreamKey(1, peer, "rate"),
            limit,
            bound};
}

Row CpuRow(const char* side, const char* figure, const char* peerName, const char* peer, Row::ELimit limit,
           double bound) {
    return {QStringLiteral("  CPU per million changes, ") + QLatin1String(side),
            QStringLiteral("s"),
            1.0,
            StreamKey(1, "ours", figure),
            QLatin1String(peerName),
            StreamKey(1, peer, figure),
            limit,
            bound};
}

}  // namespace

Scenario StreamScenario() {
    const auto playRound = [](const Stage& stage) {
        for (const StreamSize& size : sizes)
            PlayStream(stage, size, 1, 1);
    };
    return {QStringLiteral("stream"),
            5,
            playRound,
            {RateRow("", "", Row::AtLeast, 3.0), RateRow("QTcpSocket, 8 bytes", "raw", Row::AtLeast, 0.75),
             RateRow("Qt Remote Objects", "remoteobjects", Row::AtLeast, 5.0),
             RateRow("QtRO, bare signal", "remotesignal", Row::Information, 0),
             RateRow("MQTT", "mqtt", Row::AtLeast, 20.0),
             CpuRow("server", "servercpu", "", "", Row::AtMost, 0.04),
             CpuRow("client", "clientcpu", "", "", Row::AtMost, 0.04),
             CpuRow("server", "servercpu", "Qt Remote Objects", "remoteobjects", Row::Information, 0),
             CpuRow("client", "clientcpu", "Qt Remote Objects", "remoteobjects", Row::Information, 0)}};
}

}  // namespace bench
