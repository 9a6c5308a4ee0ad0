// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>

#include <functional>
#include <utility>

/// Hears of everything that happens in a tree, also of what comes, and acts once: at the moment that is asked
/// for. A test that asks for the first, the second, and so on, until nothing is left to hear, has acted
/// whenever anybody can. Outlives what it watches.
class Meddler final : public IObserver {
  public:
    /// \a moment counts from 1.
    Meddler(int moment, std::function<void()> act) : m_moment(moment), m_act(std::move(act)) {}

    /// From now on it counts.
    void Start() { m_isListening = true; }
    /// \return whether it has acted.
    bool Stop() {
        m_isListening = false;
        return m_heard >= m_moment;
    }
    void Watch(Observable& observable) { observable.AddObserver(this); }
    void WatchAllBelow(values::Node& node) {
        node.AddObserver(this);
        for (values::TreeItem* const item : node.GetTreeItems()) {
            if (item->IsNode())
                WatchAllBelow(static_cast<values::Node&>(*item));
            else if (Observable* const observable = item->GetObservable())
                observable->AddObserver(this);
        }
    }

    void Update(Observable* source, TChangeCode code) override {
        if (code == changecode::ChildrenAdded) {
            if (auto* const node = dynamic_cast<values::Node*>(source)) WatchAllBelow(*node);
        }
        if (m_isListening && ++m_heard == m_moment) m_act();
    }

  private:
    const int m_moment;
    std::function<void()> m_act;
    int m_heard = 0;
    bool m_isListening = false;
};
