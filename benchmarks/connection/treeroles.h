// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "openaccess.h"
#include "role.h"
#include "turnmonitor.h"

#include <platform/values/observable.h>
#include <platform/values/tree.h>
#include <platform/vtclient/vtserver.h>

#include <memory>

class IVtClient;

namespace bench {

/// Serves a tree of many numbers. When all clients have it, tells its longest turn and how its heap has
/// grown.
class TreeServer final : public Role, private IObserver {
  public:
    explicit TreeServer(const Settings& settings);
    void Start() override;

  private:
    void Update(Observable* source, TChangeCode code) override;
    void TellResultNow() const;

    values::Tree m_tree;
    OpenAccess m_access;
    VtServer m_server;
    std::shared_ptr<void> m_offer;  ///< at NATS, if it is wanted there
    TurnMonitor m_turns;
    int m_missingClients;
    std::size_t m_heapAtStart = 0;
};

/// Mirrors that tree, once or several times; tells how long that took, its longest turn, and what a mirrored
/// value takes more of the heap than one of its own. With "forget", edits every value and deletes it, before
/// any edit can be sent.
class TreeClient final : public Role, private IObserver {
  public:
    explicit TreeClient(const Settings& settings);
    void Start() override;

  private:
    void Update(Observable* source, TChangeCode code) override;
    void Connect();
    void TellResultNow() const;
    void EditAndDeleteAll();

    values::Tree m_tree;
    std::vector<IVtClient*> m_clients;  // of the center
    int m_values;
    int m_established = 0;
    Stopwatch m_watch;
    TurnMonitor m_turns;
    std::size_t m_heapPerTree = 0;
    std::size_t m_heapBefore = 0;
    double m_seconds = 0.0;
};

}  // namespace bench
