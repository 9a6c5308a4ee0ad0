// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/session/natsconnector.h>
#include <platform/nats/session/natslistener.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/platform/vtclient/channelpair.h>

#include <memory>

/// The two ends of a session over a server of NATS of its own.
class NatsPair final : public ChannelPair, private vt::IConnector::IListener {
  public:
    ~NatsPair() override;

    bool Connect();
    bool RunUntil(const std::function<bool()>& isDone) override;
    void Settle() override;

    NatsServer& Server() { return m_nats; }
    nats::INatsBus& ServerBus() { return *m_bus; }

  private:
    void OnConnected(std::unique_ptr<vt::IChannel> channel) override { client = std::move(channel); }
    void OnConnectFailed(const QString& reason) override;
    static bool Echo(nats::INatsBus& from, nats::INatsBus& to);

    NatsServer m_nats;
    std::shared_ptr<nats::INatsBus> m_bus;
    std::weak_ptr<nats::INatsBus> m_clientBus;
    std::unique_ptr<nats::NatsListener> m_listener;
    std::unique_ptr<nats::NatsConnector> m_connector;
};

std::unique_ptr<ChannelPair> ConnectOverNats();
