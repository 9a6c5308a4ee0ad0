// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>

#include <memory>
#include <random>
#include <vector>

/// Observers that come to items of a subtree and leave them at random, forget items that go away, and count
/// what they are told of an item that they do not observe (any more).
class Spectators {
  public:
    explicit Spectators(unsigned seed) : m_random(seed) {}
    ~Spectators() { LeaveAll(); }
    Spectators(const Spectators&) = delete;
    Spectators& operator=(const Spectators&) = delete;

    /// Some come to items at and below \a item, and some of those who are there leave.
    void Move(values::TreeItem* item) {
        for (const auto& one : m_all)
            if (m_random() % 8 == 0) one->Leave();
        if (item != nullptr) ComeTo(item);
    }
    void LeaveAll() {
        for (const auto& one : m_all)
            one->Leave();
    }
    int CountStrayCalls() const { return m_strayCalls; }
    int CountCalls() const { return m_calls; }

  private:
    class Spectator final : public IObserver {
      public:
        Spectator(Spectators& all, values::TreeItem* item) : m_all(all), m_item(item) {
            m_item->GetObservable()->AddObserver(this);
        }
        void Leave() {
            if (m_item != nullptr) m_item->GetObservable()->DeleteObserver(this);
            m_item = nullptr;
        }
        void Update(Observable* source, TChangeCode code) override {
            ++m_all.m_calls;
            if (m_item == nullptr || source != m_item->GetObservable()) {
                ++m_all.m_strayCalls;
                return;
            }
            const bool isGoing = m_item->IsNode() ? code == changecode::GoingAway
                                                  : code == changecode::StateChanged &&
                                                        m_item->GetState() == values::GoingAway;
            if (isGoing) Leave();
        }

      private:
        Spectators& m_all;
        values::TreeItem* m_item;
    };

    void ComeTo(values::TreeItem* item) {
        if (m_random() % 8 == 0) m_all.push_back(std::make_unique<Spectator>(*this, item));
        if (!item->IsNode()) return;
        for (values::TreeItem* const child : static_cast<values::Node*>(item)->GetTreeItems())
            ComeTo(child);
    }

    std::mt19937 m_random;
    std::vector<std::unique_ptr<Spectator>> m_all;  ///< also those who left: nobody may call them
    int m_calls = 0;
    int m_strayCalls = 0;
};
