// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/plant/frequencyset.h>
#include <devicecontrol/multichannelserver/common/gts/plant/moduleblankingrecord.h>
#include <devicecontrol/multichannelserver/common/gts/plant/wholehertz.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

/// Follows the modules below the node "GTS" and keeps the set of the frequencies that are blanked.
class Blanking::BlankingImpl final : public IObserver {
  public:
    BlankingImpl();

    void EnableClient(BlankingClient* client, bool enable);
    bool IsBlanked(double frequency, const BlankingClient* client) const {
        if (!m_disabledClients.empty() && IsDisabled(client)) return false;
        std::uint64_t hertz = 0;
        return wholehertz::Of(frequency, &hertz) && m_blanked.Contains(hertz);
    }

    std::optional<BlankingSource> WhoBlanks(double frequency) const;
    /// What Rebuild() put in last, ascending, each once.
    std::vector<double> GetBlanked() const;

    void Update(Observable* source, TChangeCode code) override;

  private:
    using Discretes = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;
    using Record = std::shared_ptr<ModuleBlankingRecord>;

    /// A value of a module, found by the address of its observable, with the module's record.
    template <class V>
    struct Observed {
        Observation<V> value;
        Record record;
    };
    template <class V>
    using ObservedMap = std::map<Observable*, Observed<V>>;

    bool IsDisabled(const BlankingClient* client) const {
        return std::find(m_disabledClients.begin(), m_disabledClients.end(), client) !=
               m_disabledClients.end();
    }
    template <class V>
    static void ForgetIfGoingAway(ObservedMap<V>& map, Observable* source, TChangeCode code);
    template <class V>
    const Observed<V>& Observe(ObservedMap<V>& map, V& value, const Record& record);
    void DiscoverModules();
    void AddModule(values::Node* node);
    static void ReadInputs(const Observed<Discretes>& discretes);
    static void ReadAssignments(const Observed<Assignments>& assignments);
    /// Whether input \a i of a module blanks a frequency, whose \a hertz then are whole.
    static bool IsBlanking(const ModuleBlankingRecord& record, std::size_t i, std::uint64_t* hertz) {
        return record.active[i] && record.frequencies[i] > 0.0 &&
               wholehertz::Of(record.frequencies[i], hertz);
    }
    static void CollectBlanked(ModuleBlankingRecord& record);
    void Rebuild();

    Observation<values::Node> m_node;  ///< "GTS"; none without a tree, and after it went away
    std::vector<BlankingClient*> m_disabledClients;
    ObservedMap<values::Node> m_modules;
    ObservedMap<Assignments> m_assignments;
    ObservedMap<Discretes> m_discretes;
    FrequencySet m_blanked;
    std::vector<std::uint64_t> m_scratch;  ///< of Rebuild()
};
