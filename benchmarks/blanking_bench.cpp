// SPDX-License-Identifier: Apache-2.0
// Asking whether a frequency is blanked, beside the bare lookup of a number in the best flat hash set at
// hand; and what one edge at an input costs.
#include "contest.h"

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QString>

#include <absl/container/flat_hash_set.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int InputsPerModule = 12;

/// Frequencies of a grid of 25 kHz, as they are assigned.
double Assigned(int number) {
    return 30000000.0 + 25000.0 * number;
}

/// Half of them assigned and half beside the grid, in an order that no cache can foresee.
std::vector<double> Asked(int assignedCount) {
    constexpr int AskedCount = 1 << 16;
    std::mt19937 random(1);
    std::vector<double> asked;
    for (int i = 0; i < AskedCount; ++i) {
        const int number = static_cast<int>(random() % static_cast<unsigned>(assignedCount));
        asked.push_back(Assigned(number) + (random() % 2 == 0 ? 0.0 : 12500.0));
    }
    return asked;
}

template <class V>
V* AddTo(values::Node& node, const char* name) {
    auto value = std::make_unique<V>();
    V* const added = value.get();
    value->SetName(QLatin1String(name));
    std::unique_ptr<values::TreeItem> item = std::move(value);
    node.AddChild(item);
    return added;
}

/// A tree with modules of which every input is active, and Blanking over it.
class Suppression {
  public:
    explicit Suppression(int frequencyCount) {
        Blanking::Instance();
        for (int first = 0; first < frequencyCount; first += InputsPerModule)
            Publish(first, std::min(InputsPerModule, frequencyCount - first));
    }
    ~Suppression() { Blanking::Instance()->FreeInstance(); }
    Suppression(const Suppression&) = delete;
    Suppression& operator=(const Suppression&) = delete;

    const std::vector<values::ValueNumeric<int>*>& Inputs() const { return m_inputs; }

  private:
    void Publish(int first, int count) {
        auto node = std::make_unique<values::Node>(QStringLiteral("Module-%1").arg(first));
        m_inputs.push_back(AddTo<values::ValueNumeric<int>>(*node, "InputDiscretes"));
        std::vector<double> frequencies;
        for (int i = 0; i < count; ++i)
            frequencies.push_back(Assigned(first + i));
        AddTo<values::ValueList<double>>(*node, "FrequencyAssignments")->SetItems(frequencies);
        std::unique_ptr<values::TreeItem> item = std::move(node);
        m_tree.AddItem(QStringLiteral("/ORVServer/GTS"), item);
    }

    values::Tree m_tree;
    std::vector<values::ValueNumeric<int>*> m_inputs;
};

/// Looks \a asked up one after the other, none before the answer to the last is known: as a server does.
template <class T, class IsIn>
void Measure(benchmark::State& state, const std::vector<T>& asked, const IsIn& isIn) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(isIn(asked[i]));
        i = (i + 1) & (asked.size() - 1);
    }
}

contest::Function Ours(int count) {
    return [count](benchmark::State& state) {
        const Suppression suppression(count);
        BlankingClient client;
        const Blanking& blanking = *Blanking::Instance();
        Measure(state, Asked(count),
                [&](double frequency) { return blanking.IsFrequencyBlanked(frequency, &client); });
    };
}

contest::Function FlatHashSet(int count) {
    return [count](benchmark::State& state) {
        absl::flat_hash_set<std::uint64_t> set;
        for (int i = 0; i < count; ++i)
            set.insert(static_cast<std::uint64_t>(Assigned(i)));
        const std::vector<double> asked = Asked(count);
        Measure(state, std::vector<std::uint64_t>(asked.begin(), asked.end()),
                [&set](std::uint64_t frequency) { return set.contains(frequency); });
    };
}

/// The time of one edge with 64 modules, in us: the median of many.
double MeasureEdge() {
    using Clock = std::chrono::steady_clock;
    constexpr int ModuleCount = 64;
    constexpr int EdgeCount = 20000;
    const Suppression suppression(ModuleCount * InputsPerModule);
    std::vector<double> times;
    for (int i = 0; i < EdgeCount; ++i) {
        values::ValueNumeric<int>* const input =
            suppression.Inputs()[static_cast<std::size_t>(i) % ModuleCount];
        const Clock::time_point start = Clock::now();
        input->SetValue(input->GetValue() ^ 1);
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + EdgeCount / 2, times.end());
    return times[EdgeCount / 2];
}

}  // namespace

void AddBlankingContests() {
    for (const auto& [count, text] :
         {std::pair(10, "10"), std::pair(1000, "1,000"), std::pair(100000, "100,000")})
        contest::Add(std::string("is it blanked, ") + text + " frequencies", Ours(count),
                     {{"absl::flat_hash_set, bare lookup", FlatHashSet(count), 2.0}});
    contest::AddFigure("one edge of 64 modules of 12 inputs", "us", MeasureEdge, 20.0);
}
