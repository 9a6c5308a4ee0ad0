// SPDX-License-Identifier: Apache-2.0
#include "pacedroles.h"

#include "../memoryuse.h"
#include "statistics.h"

#include <algorithm>
#include <chrono>

namespace bench {

namespace {

constexpr int ChangesPerTurn = 100;
constexpr int TurnsPerLook = 100;  // at the heap
constexpr int WarmUpTurns = 200;   // while the queues of all clients grow to what they need

// The clock of the machine in steps of 64 ns, which lasts for two minutes in 31 bits.
constexpr int ClockMask = 0x7fffffff;
constexpr double ClockStep = 0.064;  // us

int Now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<int>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() / 64 &
                            ClockMask);
}

Settings WithEndValue(Settings settings) {
    return settings.Set(QStringLiteral("values"), settings.Int(QStringLiteral("values")) + 1);
}

}  // namespace

PacedServer::PacedServer(const Settings& settings)
    : RoadRole(WithEndValue(settings)),
      m_end(MakeServerEnd()),
      m_interval(settings.Int(QStringLiteral("interval"))),
      m_turns(settings.Int(QStringLiteral("turns")) + WarmUpTurns) {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &PacedServer::SetSome);
    // It may come in a thread of a library.
    m_end->onReport = [this](int, int) { QMetaObject::invokeMethod(this, [this] { TakeReport(); }); };
}

void PacedServer::Start() {
    m_heapAtStart = HeapInUse();
    m_end->Open();
}

void PacedServer::TakeReport() {
    if (++m_present == GetSetup().clients) m_timer.start(m_interval);
}

void PacedServer::SetSome() {
    const int endValue = GetSetup().values - 1;
    if (m_turn++ % TurnsPerLook == 0) m_highestHeap = std::max(m_highestHeap, HeapInUse());
    if (m_turn == m_turns) {
        m_timer.stop();
        m_end->Set(endValue, 1);
        m_end->Send();
        const auto growth = static_cast<double>(m_highestHeap) - static_cast<double>(m_heapAtStart);
        return TellResult(Settings().Set(QStringLiteral("heap"), growth));
    }
    for (int i = 0; i < ChangesPerTurn; ++i) {
        m_end->Set(m_next, Now());
        m_next = (m_next + 1) % endValue;
    }
    m_end->Send();
}

PacedClient::PacedClient(const Settings& settings) : RoadRole(WithEndValue(settings)) {
    const auto changes = static_cast<std::size_t>(settings.Int(QStringLiteral("turns"))) * ChangesPerTurn;
    m_microseconds.reserve(changes * static_cast<std::size_t>(GetSetup().clients));
}

void PacedClient::Start() {
    for (int client = 0; client < GetSetup().clients; ++client) {
        m_ends.push_back(MakeClientEnd(client));
        ClientEnd* const end = m_ends.back().get();
        end->onReady = [end] { end->Report(0); };
        end->onChange = [this](int index, int content) { TakeChange(index, content); };
        end->Open();
    }
}

void PacedClient::TakeChange(int index, int content) {
    if (index < GetSetup().values - 1) {
        m_microseconds.push_back(((Now() - content) & ClockMask) * ClockStep);
        return;
    }
    if (++m_ended < m_ends.size()) return;
    TellResult(Settings()
                   .Set(QStringLiteral("p50"), Quantile(m_microseconds, 0.5))
                   .Set(QStringLiteral("p99"), Quantile(m_microseconds, 0.99)));
}

}  // namespace bench
