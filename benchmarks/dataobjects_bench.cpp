// SPDX-License-Identifier: Apache-2.0
// Data objects on base paths of their own: the cost of one must not grow with their number.
#include "contest.h"

#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/values/tree.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace {

// Detaching touches each of an object's values once, and does little else: it costs what a cache line costs.
// Fewer objects than these have their values in the second level cache, as they were built just before, and
// are two to four times as cheap, which says nothing about the code. Beyond, the cost of one stays the same.
constexpr int Few = 8000;
constexpr int Many = 64000;

using Objects = std::vector<std::unique_ptr<MCSStatus>>;

void Construct(Objects& objects, int count) {
    for (int i = 0; i < count; ++i)
        objects.push_back(std::make_unique<MCSStatus>(QStringLiteral("/Server%1/Status").arg(i)));
}

void RunConstruct(benchmark::State& state, int count) {
    for (auto _ : state) {
        auto tree = std::make_unique<values::Tree>();
        Objects objects;
        Construct(objects, count);
        state.PauseTiming();
        objects.clear();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void RunDestroy(benchmark::State& state, int count) {
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<values::Tree>();
        Objects objects;
        Construct(objects, count);
        state.ResumeTiming();
        objects.clear();
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

}  // namespace

void AddDataObjectContests() {
    contest::Add(
        "construct 64,000 status objects, per object",
        [](benchmark::State& state) { RunConstruct(state, Many); },
        {{"8,000 objects, per object", [](benchmark::State& state) { RunConstruct(state, Few); }, 1.5}});
    contest::Add(
        "destroy 64,000 status objects, per object", [](benchmark::State& state) { RunDestroy(state, Many); },
        {{"8,000 objects, per object", [](benchmark::State& state) { RunDestroy(state, Few); }, 1.5}});
}
