// SPDX-License-Identifier: Apache-2.0
// Building large trees: time per value must not grow with their number, and memory per value is bounded.
#include "contest.h"
#include "memoryuse.h"

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace {

constexpr int ValuesPerNode = 1000;
constexpr int Few = 100000;
constexpr int Many = 1000000;

std::vector<QString> Names() {
    std::vector<QString> names;
    for (int i = 0; i < ValuesPerNode; ++i)
        names.push_back(QStringLiteral("Value%1").arg(i));
    return names;
}

/// Each value has a name text of its own, as when names come from a file or a peer.
void Fill(const std::vector<QString>& names, int count) {
    for (int i = 0; i < count; ++i) {
        const QString path =
            QStringLiteral("/Branch%1/Node%2/").arg(i / ValuesPerNode % 10).arg(i / ValuesPerNode) +
            names[static_cast<std::size_t>(i % ValuesPerNode)];
        values::ProvideValue<values::ValueNumeric<double>>(path, 1.0, 0.0, 100.0, false, nullptr);
    }
}

void RunCreate(benchmark::State& state, int count) {
    const std::vector<QString> names = Names();
    for (auto _ : state) {
        auto tree = std::make_unique<values::Tree>();
        Fill(names, count);
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void RunDestroy(benchmark::State& state, int count) {
    const std::vector<QString> names = Names();
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<values::Tree>();
        Fill(names, count);
        state.ResumeTiming();
        tree.reset();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

double BytesPerValue() {
    const std::vector<QString> names = Names();
    const values::Tree tree;
    const std::size_t before = HeapInUse();
    Fill(names, Many);
    return static_cast<double>(HeapInUse() - before) / Many;
}

}  // namespace

// Nothing but caches and page faults may make a value of the large tree dearer than one of the small.
void AddTreeContests() {
    contest::Add(
        "create 1,000,000 values, per value", [](benchmark::State& state) { RunCreate(state, Many); },
        {{"100,000 values, per value", [](benchmark::State& state) { RunCreate(state, Few); }, 1.5}});
    contest::Add(
        "destroy 1,000,000 values, per value", [](benchmark::State& state) { RunDestroy(state, Many); },
        {{"100,000 values, per value", [](benchmark::State& state) { RunDestroy(state, Few); }, 1.5}});
    contest::AddFigure("memory of a number in a tree of 1,000,000", "bytes, name included", BytesPerValue,
                       400.0);
}
