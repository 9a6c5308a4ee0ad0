// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/ivtlosses.h>

#include <vector>

/// Notes what a client tells of what has passed it by.
class LossWatch final : public IObserver {
  public:
    explicit LossWatch(IVtClient& client) : m_client(client) { m_client.AddObserver(this); }
    ~LossWatch() override { m_client.DeleteObserver(this); }
    LossWatch(const LossWatch&) = delete;
    LossWatch& operator=(const LossWatch&) = delete;
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != connectioncode::ChangesLost) return;
        losses.push_back(dynamic_cast<const IVtLosses&>(m_client).GetLastLoss());
        wasEstablished = m_client.AreAllTicsEstablished();
    }

    std::vector<VtLoss> losses;
    bool wasEstablished = false;  ///< when it was told last

  private:
    IVtClient& m_client;
};
