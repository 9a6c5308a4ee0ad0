// SPDX-License-Identifier: Apache-2.0
#include "streamplay.h"

namespace bench {

namespace {

constexpr int Few = 16;
constexpr int Many = 128;
constexpr int Processes = 2;  // of clients

constexpr StreamSize sizesForOne[] = {{"ours", 200000, 2000000}};
constexpr StreamSize sizesForFew[] = {
    {"ours", 50000, 500000},
    {"remoteobjects", 5000, 100000},
    {"mqtt", 5000, 20000},
};
// Of both rows of ours the server gets a fifth of the run ahead of the slowest client at most. One that may
// be ahead by all of it leaves a client that shared a core with it alone in the end, beside a core that has
// nothing to do.
//
// A source and a replica for each value take Qt Remote Objects half a minute to set up, so it sends bare
// signals.
constexpr StreamSize sizesForMany[] = {
    {"ours", 5000, 250000, 50000},
    {"remotesignal", 5000, 15000},
};

void PlayRound(const Stage& stage) {
    for (const StreamSize& size : sizesForOne)
        PlayStream(stage, size, 1, 1);
    for (const StreamSize& size : sizesForFew)
        PlayStream(stage, size, Few, Processes);
    for (const StreamSize& size : sizesForMany)
        PlayStream(stage, size, Many, Processes);
}

Row RateRow(int clients, const char* peerName, int peerClients, const char* peer, Row::ELimit limit,
            double bound) {
    return {QStringLiteral("deliveries to %1 clients").arg(clients),
            QStringLiteral("M/s"),
            1e-6,
            StreamKey(clients, "ours", "rate"),
            QLatin1String(peerName),
            StreamKey(peerClients, peer, "rate"),
            limit,
            bound};
}

Row CpuRow(int clients, const char* peerName, int peerClients, const char* peer, Row::ELimit limit,
           double bound) {
    return {QStringLiteral("  server CPU per million deliveries, %1").arg(clients),
            QStringLiteral("s"),
            1.0,
            StreamKey(clients, "ours", "servercpu"),
            QLatin1String(peerName),
            StreamKey(peerClients, peer, "servercpu"),
            limit,
            bound};
}

}  // namespace

Scenario FanOutScenario() {
    return {QStringLiteral("fan-out"),
            3,
            PlayRound,
            {RateRow(Few, "", Few, "", Row::AtLeast, 4.0),
             RateRow(Few, "Qt Remote Objects", Few, "remoteobjects", Row::Information, 0),
             RateRow(Few, "MQTT", Few, "mqtt", Row::Information, 0),
             RateRow(Many, "ours, 16 clients", Few, "ours", Row::AtLeast, 0.95),
             RateRow(Many, "QtRO, bare signal", Many, "remotesignal", Row::Information, 0),
             CpuRow(Few, "ours, 1 client", 1, "ours", Row::AtMost, 1.0),
             CpuRow(Many, "ours, 16 clients", Few, "ours", Row::AtMost, 1.0),
             CpuRow(Few, "Qt Remote Objects", Few, "remoteobjects", Row::Information, 0),
             CpuRow(Many, "QtRO, bare signal", Many, "remotesignal", Row::Information, 0)}};
}

}  // namespace bench
