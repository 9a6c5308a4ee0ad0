// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputundo.h>

#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace {

QString NodeOf(const ModuleSettings& settings) {
    return ModuleIdentity{settings.type, settings.index, QString()}.NodeName();
}

/// Takes back what was entered for one module, which is as \a now says.
class TakenBackModule {
  public:
    TakenBackModule(SuppressionPlant& plant, const ModuleSettings& before, const ModuleSettings& after,
                    const ModuleSettings& now)
        : m_plant(plant), m_before(before), m_after(after), m_now(now), m_node(NodeOf(now)) {}

    void TakeBack() const {
        if (IsOwn(m_before.label, m_after.label, m_now.label)) m_plant.SetName(m_node, m_before.label);
        if (IsOwn(m_before.address, m_after.address, m_now.address))
            m_plant.SetAddress(m_node, m_before.address);
        for (std::size_t i = 0; i < m_now.frequencies.size(); ++i)
            TakeBackInput(i);
    }

  private:
    template <class T>
    static bool IsOwn(const T& before, const T& after, const T& now) {
        return before != after && now == after;
    }
    void TakeBackInput(std::size_t i) const {
        const int input = static_cast<int>(i);
        if (IsOwn(m_before.labels[i], m_after.labels[i], m_now.labels[i]))
            m_plant.SetLabel(m_node, input, m_before.labels[i]);
        if (IsOwn(m_before.frequencies[i], m_after.frequencies[i], m_now.frequencies[i]))
            m_plant.SetFrequency(m_node, input, m_before.frequencies[i]);
    }

    SuppressionPlant& m_plant;
    const ModuleSettings& m_before;
    const ModuleSettings& m_after;
    const ModuleSettings& m_now;
    const QString m_node;
};

}  // namespace

int inputundo::CountCells(const std::vector<ModuleSettings>& before,
                          const std::vector<ModuleSettings>& after) {
    int cells = 0;
    for (std::size_t module = 0; module < before.size(); ++module) {
        const ModuleSettings& old = before[module];
        const ModuleSettings& now = after[module];
        cells += int{old.label != now.label} + int{old.address != now.address};
        for (std::size_t i = 0; i < old.frequencies.size(); ++i)
            cells += int{old.labels[i] != now.labels[i]} + int{old.frequencies[i] != now.frequencies[i]};
    }
    return cells;
}

std::vector<double> inputundo::FindCleared(const std::vector<ModuleSettings>& before,
                                           const std::vector<ModuleSettings>& after) {
    const auto all = [](const std::vector<ModuleSettings>& modules) {
        std::set<double> frequencies;
        for (const ModuleSettings& module : modules)
            frequencies.insert(module.frequencies.begin(), module.frequencies.end());
        frequencies.erase(0.0);  // an input without one
        return frequencies;
    };
    const std::set<double> old = all(before);
    const std::set<double> now = all(after);
    std::vector<double> cleared;
    std::set_difference(old.begin(), old.end(), now.begin(), now.end(), std::back_inserter(cleared));
    return cleared;
}

void inputundo::TakeBack(SuppressionPlant& plant, const std::vector<ModuleSettings>& before,
                         const std::vector<ModuleSettings>& after) {
    for (const ModuleSettings& now : plant.GetSettings()) {
        const auto isIt = [&](const ModuleSettings& other) {
            return NodeOf(other) == NodeOf(now) && other.frequencies.size() == now.frequencies.size();
        };
        const auto entered = std::find_if(after.begin(), after.end(), isIt);
        if (entered == after.end()) continue;
        const auto old = before.begin() + (entered - after.begin());
        TakenBackModule(plant, *old, *entered, now).TakeBack();
    }
}
