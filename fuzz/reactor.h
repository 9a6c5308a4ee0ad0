// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/treeedits.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>

#include <functional>

/// Observes everything in the tree and, once armed, does something while it is told: as devices, data objects
/// and displays do.
class Reactor final : public IObserver {
  public:
    explicit Reactor(std::function<void()> act) : m_act(std::move(act)) { ObserveAll(); }
    ~Reactor() override {
        if (values::Tree::Instance() != nullptr)
            ForAll([this](values::TreeItem& item) { item.GetObservable()->DeleteObserver(this); });
    }
    Reactor(const Reactor&) = delete;
    Reactor& operator=(const Reactor&) = delete;

    /// Acts at the \a number-th call from now on.
    void Arm(unsigned number) { m_left = number; }
    void Trigger() {
        if (m_left == 0 || --m_left > 0) return;
        m_act();
    }
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code == changecode::StructureChanged) m_hasNew = true;
        Trigger();
    }
    /// Observes what is new, too.
    void Refresh() {
        if (m_hasNew) ObserveAll();
    }
    /// Whether nobody else observes anything below the root.
    static bool IsNobodyElseLeft() {
        bool isNobody = true;
        ForAll([&isNobody](values::TreeItem& item) {
            const int own = 1;
            if (item.GetParent() != nullptr && item.GetObservable()->CountObservers() > own) isNobody = false;
        });
        return isNobody;
    }

  private:
    static void ForAll(const std::function<void(values::TreeItem&)>& visit) {
        treeedits::ForEach(values::Tree::Instance()->GetRoot(), visit);
    }
    void ObserveAll() {
        m_hasNew = false;
        ForAll([this](values::TreeItem& item) { item.GetObservable()->AddObserver(this); });
    }

    std::function<void()> m_act;
    unsigned m_left = 0;
    bool m_hasNew = false;
};
