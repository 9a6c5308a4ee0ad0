// SPDX-License-Identifier: Apache-2.0
#include "streamplay.h"

namespace bench {

namespace {

constexpr int Few = 16;
constexpr int Many = 128;
constexpr int Pause = 5000;   // ms: each client has had its ping
constexpr int Processes = 2;  // of clients

// Reports of many clients would cost the server more than the changes: they come at the ends alone. What is
// ahead of the slowest client waits in the server of NATS, and is well within what that keeps for a client.
constexpr StreamSize sizesForOne[] = {{"nats", 500000, 4000000, 1000000, 100000, Pause}};
constexpr StreamSize sizesForFew[] = {{"ours", 50000, 500000},
                                      {"nats", 100000, 2000000, 2100000, 10000000, Pause}};
constexpr StreamSize sizesForMany[] = {{"ours", 5000, 250000, 50000},
                                       {"nats", 50000, 1000000, 1050000, 10000000, Pause}};

void PlaySharedRoads(const Stage& stage) {
    for (const StreamSize& size : sizesForOne)
        PlayStream(stage, size, 1, 1);
    for (const StreamSize& size : sizesForFew)
        PlayStream(stage, size, Few, Processes);
    for (const StreamSize& size : sizesForMany)
        PlayStream(stage, size, Many, Processes);
}

Row SharedRate(int clients) {
    return {QStringLiteral("deliveries by a shared road to %1 clients").arg(clients),
            QStringLiteral("M/s"),
            1e-6,
            StreamKey(clients, "nats", "rate"),
            QStringLiteral("ours, own fan-out"),
            StreamKey(clients, "ours", "rate"),
            Row::AtLeast,
            0.6};
}

Row SharedCpu(int clients, const char* peerName, int peerClients, const char* peer, Row::ELimit limit,
              double bound) {
    return {QStringLiteral("  server CPU per million changes, %1").arg(clients),
            QStringLiteral("s"),
            1.0,
            StreamKey(clients, "nats", "changecpu"),
            QLatin1String(peerName),
            StreamKey(peerClients, peer, "changecpu"),
            limit,
            bound};
}

}  // namespace

// These clients apply what they hear, and share two processors with the server: whether its cost grows with
// them shows with light ones.
Scenario SharedRoadScenario() {
    return {QStringLiteral("shared road"),
            3,
            PlaySharedRoads,
            {SharedRate(Few), SharedRate(Many), SharedCpu(1, "", 1, "", Row::Information, 0),
             SharedCpu(Few, "shared, 1 client", 1, "nats", Row::Information, 0),
             SharedCpu(Many, "shared, 1 client", 1, "nats", Row::Information, 0),
             SharedCpu(Few, "ours, own fan-out", Few, "ours", Row::Information, 0),
             SharedCpu(Many, "ours, own fan-out", Many, "ours", Row::AtMost, 0.2)}};
}

}  // namespace bench
