// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/channelpair.h>

#include <platform/vtclient/channel/socketconnector.h>
#include <platform/vtclient/channel/socketlistener.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/support/waituntil.h>

namespace {

class MemoryPair final : public ChannelPair {
  public:
    MemoryPair() {
        const auto wire = std::make_shared<MemoryChannel::Wire>();
        m_wire = wire;
        auto near = std::make_unique<MemoryChannel>(wire, true);
        auto far = std::make_unique<MemoryChannel>(wire, false);
        near->SetMaxMessage(vtlimits::MaxFrameBeforeWelcome);
        far->SetMaxMessage(vtlimits::MaxFrameBeforeWelcome);
        m_client = near.get();
        m_server = far.get();
        client = std::move(near);
        server = std::move(far);
    }
    bool RunUntil(const std::function<bool()>& isDone) override {
        while (!isDone())
            if (!Step()) return false;
        return true;
    }
    void Settle() override {
        while (Step()) {
        }
    }

  private:
    bool Step() {
        const bool hasServerMoved = !m_wire->isBGone && m_server->Deliver();
        const bool hasClientMoved = !m_wire->isAGone && m_client->Deliver();
        return hasServerMoved || hasClientMoved;
    }

    std::shared_ptr<MemoryChannel::Wire> m_wire;
    MemoryChannel* m_client;
    MemoryChannel* m_server;
};

class SocketPair final : public ChannelPair, private vt::IConnector::IListener {
  public:
    bool Connect(const VtServerOptions& serverOptions, const VtClientOptions& clientOptions) {
        QString error;
        if (!m_listener.Listen(serverOptions, false, &error)) return false;
        m_listener.SetHandler([this](std::unique_ptr<vt::IChannel> channel) { server = std::move(channel); });
        const bool isTls = !serverOptions.certificateFile.isEmpty();
        vt::SocketConnector connector(QStringLiteral("127.0.0.1"), m_listener.Port(), isTls, clientOptions);
        connector.SetListener(this);
        connector.Connect();
        return WaitUntil([this] { return client != nullptr && server != nullptr; });
    }
    bool RunUntil(const std::function<bool()>& isDone) override { return WaitUntil(isDone); }
    void Settle() override { RunTurns(100); }

  private:
    void OnConnected(std::unique_ptr<vt::IChannel> channel) override { client = std::move(channel); }
    void OnConnectFailed(const QString& /*reason*/) override {}

    vt::SocketListener m_listener;
};

std::unique_ptr<ChannelPair> ConnectSockets(const VtServerOptions& server, const VtClientOptions& client) {
    auto pair = std::make_unique<SocketPair>();
    if (!pair->Connect(server, client)) return nullptr;
    return pair;
}

}  // namespace

std::unique_ptr<ChannelPair> ConnectInMemory() {
    return std::make_unique<MemoryPair>();
}

std::unique_ptr<ChannelPair> ConnectOverTcp() {
    VtServerOptions server;
    server.port = 0;
    return ConnectSockets(server, VtClientOptions());
}

std::unique_ptr<ChannelPair> ConnectOverTls() {
    const Certificates& certificates = Certificates::Instance();
    VtServerOptions server;
    server.port = 0;
    server.certificateFile = certificates.File("server.pem");
    server.privateKeyFile = certificates.File("server.key");
    VtClientOptions client;
    client.caFile = certificates.File("authority.pem");
    return ConnectSockets(server, client);
}

std::vector<Transport> TransportsToTest() {
    return {Transport{"Memory", &ConnectInMemory}, Transport{"Tcp", &ConnectOverTcp},
            Transport{"Tls",
                      &ConnectOverTls,
                      [] { return Certificates::Instance().Error(); },
                      {true, true, "server"},
                      {true, true, ""}}};
}
