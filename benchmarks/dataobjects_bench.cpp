// SPDX-License-Identifier: Apache-2.0
// Data objects on base paths of their own: the cost of one must not grow with their number.
#include "contest.h"

#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/values/tree.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace {

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
        "construct 8,000 status objects, per object",
        [](benchmark::State& state) { RunConstruct(state, 8000); },
        {{"1,000 objects, per object", [](benchmark::State& state) { RunConstruct(state, 1000); }, 1.5}});
    contest::Add(
        "destroy 8,000 status objects, per object", [](benchmark::State& state) { RunDestroy(state, 8000); },
        {{"1,000 objects, per object", [](benchmark::State& state) { RunDestroy(state, 1000); }, 1.5}});
}
