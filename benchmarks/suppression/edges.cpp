// SPDX-License-Identifier: Apache-2.0
#include "edges.h"

#include "../memoryuse.h"
#include "plant.h"
#include "stopwatch.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <random>

namespace bench {

namespace {

/// Serves events meanwhile.
void Pass(int milliseconds) {
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(milliseconds);
    loop.exec();
}

class EdgePlay {
  public:
    EdgePlay(SimulatedModules& modules, Poller& poller, unsigned seed)
        : m_modules(modules), m_poller(poller), m_random(seed) {}

    bool Warm() {
        for (int module = 0; module < plant::Modules; ++module)
            if (!KeyAndRelease(module)) return false;
        return true;
    }
    bool Play(int edges, std::vector<double>* latencies) {
        for (int i = 0; i < edges; ++i) {
            if (!KeyAndRelease(static_cast<int>(m_random() % plant::Modules))) return false;
            latencies->push_back(m_latency);
        }
        return true;
    }

  private:
    bool KeyAndRelease(int module) {
        return Change(module, true, &m_latency) && Change(module, false, nullptr);
    }

    // Longer than a poll interval, so that an edge falls anywhere between two polls.
    bool Change(int module, bool isKeyed, double* latency) {
        Pass(plant::PollInterval + static_cast<int>(m_random() % plant::PollInterval));
        const Poller::Clock::time_point start = Poller::Clock::now();
        m_modules.Key(module, isKeyed);
        Poller::Clock::time_point known;
        if (!m_poller.WaitUntilKnown(module, isKeyed, &known)) return false;
        if (latency != nullptr) *latency = std::chrono::duration<double>(known - start).count();
        return true;
    }

    SimulatedModules& m_modules;
    Poller& m_poller;
    std::mt19937 m_random;
    double m_latency = 0.0;
};

}  // namespace

EdgeFigures PlayEdges(SimulatedModules& modules, Poller& poller, int edges, unsigned seed) {
    EdgeFigures figures;
    figures.latencies.reserve(static_cast<std::size_t>(edges));
    EdgePlay play(modules, poller, seed);
    bool isGood = play.Warm();
    const Stopwatch stopwatch;
    const auto heap = static_cast<double>(HeapInUse());
    isGood = isGood && play.Play(edges, &figures.latencies);
    figures.heapGrowth = static_cast<double>(HeapInUse()) - heap;
    figures.busyShare = stopwatch.BusySeconds() / stopwatch.Seconds();
    figures.error = poller.Error();
    if (!isGood && figures.error.isEmpty()) figures.error = QStringLiteral("an edge was not seen");
    return figures;
}

}  // namespace bench
