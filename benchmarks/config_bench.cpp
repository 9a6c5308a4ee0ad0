// SPDX-License-Identifier: Apache-2.0
// What a save of the configuration takes of the thread that saves. The wait for the medium is measured beside
// it, in the same run, and not counted: it belongs to the machine.
#include "contest.h"

#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>
#include <platform/values/tree.h>

#include <tests/support/filecalls_glibc.h>

#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int Modules = 1000;
constexpr int Inputs = 12;

/// A configuration file of its own.
class Store {
  public:
    Store() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("bench.ini")));
        m_root.reset(CfgCenter::Instance().OpenRoot());
    }
    ~Store() {
        m_root.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    ICfg& Root() { return *m_root; }
    QString Directory() const { return m_directory.path(); }

  private:
    QTemporaryDir m_directory;
    std::unique_ptr<ICfg> m_root;
};

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// The median of \a rounds times of \a save, in ms, without the wait for the medium, which is printed.
template <class Save>
double Measure(const Store& store, int rounds, Save save) {
    std::vector<double> times;
    std::vector<double> waits;
    for (int round = 0; round < rounds; ++round) {
        filecalls::Start(store.Directory());
        const auto begin = std::chrono::steady_clock::now();
        save(round);
        const Milliseconds whole = std::chrono::steady_clock::now() - begin;
        const Milliseconds wait = filecalls::Get().syncTime;
        times.push_back((whole - wait).count());
        waits.push_back(wait.count());
    }
    std::fprintf(stderr, "a wait for the medium: %.2f ms\n", Median(waits));
    return Median(times);
}

double SaveConfiguration() {
    const values::Tree tree;
    Store store;
    MCSConfigData config(nullptr, false);
    config.ReadFrom(&store.Root());
    return Measure(store, 51, [&config](int round) { config.SetDefaultFrequencyForChannels(1e6 + round); });
}

void SaveModule(ICfg& gts, int number, int content) {
    const std::unique_ptr<ICfg> module(gts.ProvideSection(QStringLiteral("Module%1").arg(number)));
    module->WriteInt(QStringLiteral("Index"), number);
    module->WriteString(QStringLiteral("Name"), QStringLiteral("ADAM-6051"));
    module->WriteString(QStringLiteral("Address"),
                        QStringLiteral("10.0.%1.%2").arg(number / 250).arg(number % 250));
    module->WriteInt(QStringLiteral("PollInterval"), 100 + content);
    const std::unique_ptr<ICfg> assignments(module->ProvideSection(QStringLiteral("Assignments")));
    assignments->WriteInt(QStringLiteral("AssignmentCount"), Inputs);
    for (int input = 0; input < Inputs; ++input)
        assignments->WriteInt(QStringLiteral("DI_%1").arg(input), 118000000 + 25000 * input + content);
    module->CommitKey(QStringLiteral("Index"));
}

/// The keys of a list of modules, each module committed by itself.
double SaveModules() {
    Store store;
    return Measure(store, 11, [&store](int round) {
        const CfgSave save;
        const std::unique_ptr<ICfg> gts(store.Root().ProvideSection(QStringLiteral("GTS")));
        gts->WriteInt(QStringLiteral("ModuleCount"), Modules);
        for (int number = 0; number < Modules; ++number)
            SaveModule(*gts, number, round);
    });
}

}  // namespace

void AddConfigContests() {
    contest::AddFigure("save of the configuration, less fdatasync", "ms", SaveConfiguration, 3.0);
    contest::AddFigure("save of 1,000 modules, less fdatasync", "ms", SaveModules, 300.0);
}
