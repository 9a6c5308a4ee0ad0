// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ownends.h"
#include "role.h"
#include "stopwatch.h"

#include <platform/values/observable.h>

#include <memory>
#include <vector>

class IVtClient;

namespace bench {

/// Many clients that come at once while values change, which one that is there before notices; tells how long
/// the slowest of them waited for its mirror. Then they go.
class CrowdRole final : public Role, private IObserver {
  public:
    explicit CrowdRole(const Settings& settings);
    void Start() override;

  private:
    void Update(Observable* source, TChangeCode code) override;
    IVtClient* Open(const QString& mirror);
    void Watch();
    void Come();
    void Go();

    const int m_count;
    values::Tree m_tree;
    IVtClient* m_scout = nullptr;  // of the center, as are the next
    std::vector<IVtClient*> m_clients;
    std::unique_ptr<NumberObserver> m_observer;
    NumberObserver::Handler m_onChange;
    int m_established = 0;
    double m_slowest = 0.0;
    Stopwatch m_watch;
};

}  // namespace bench
