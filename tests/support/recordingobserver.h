// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

/// Remembers what it was told, and may act on it.
class RecordingObserver final : public IObserver {
  public:
    using Event = std::pair<Observable*, TChangeCode>;
    using Reaction = std::function<void(Observable*, TChangeCode)>;

    RecordingObserver() = default;
    explicit RecordingObserver(Reaction reaction) : m_reaction(std::move(reaction)) {}

    void Update(Observable* source, TChangeCode code) override {
        m_events.emplace_back(source, code);
        if (m_reaction) m_reaction(source, code);
    }
    void React(Reaction reaction) { m_reaction = std::move(reaction); }

    const std::vector<Event>& Events() const { return m_events; }
    /// The codes alone, in order.
    std::vector<TChangeCode> Codes() const {
        std::vector<TChangeCode> codes;
        for (const Event& event : m_events)
            codes.push_back(event.second);
        return codes;
    }
    int Count(TChangeCode code) const {
        return static_cast<int>(std::count_if(m_events.begin(), m_events.end(),
                                              [code](const Event& event) { return event.second == code; }));
    }
    void Clear() { m_events.clear(); }

  private:
    std::vector<Event> m_events;
    Reaction m_reaction;
};
