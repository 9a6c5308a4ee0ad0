// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/nats/natspair.h>

#include <platform/nats/natsbusmaker.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

NatsPair::~NatsPair() {
    client.reset();
    server.reset();
}

bool NatsPair::Connect() {
    const QString station = QStringLiteral("tower");
    QString problem;
    if (!m_nats.Start()) return false;
    m_bus = nats::MakeBus(m_nats.Options(), &problem);
    m_bus->Open(true);
    if (!WaitUntil([this] { return m_bus->State() == nats::INatsBus::EState::Open; })) return false;
    m_listener = std::make_unique<nats::NatsListener>(
        m_bus, station, 1, [this](std::unique_ptr<vt::IChannel> channel) { server = std::move(channel); });
    m_bus->Flush();
    Echo(*m_bus, *m_bus);
    m_connector = std::make_unique<nats::NatsConnector>(
        [this](QString* fault) {
            auto bus = nats::MakeBus(m_nats.Options(), fault);
            m_clientBus = bus;
            return bus;
        },
        station, "-");
    m_connector->SetListener(this);
    m_connector->Connect();
    return WaitUntil([this] { return client != nullptr && server != nullptr; });
}

void NatsPair::OnConnectFailed(const QString& reason) {
    ADD_FAILURE() << reason.toStdString();
}

bool NatsPair::RunUntil(const std::function<bool()>& isDone) {
    return WaitUntil(isDone);
}

/// A word from \a from to \a to has come, and with it all that was on its way before.
bool NatsPair::Echo(nats::INatsBus& from, nats::INatsBus& to) {
    bool hasCome = false;
    const int subscription = to.Subscribe("echo", [&hasCome](const nats::NatsMessage&) { hasCome = true; });
    to.Flush();
    const bool isHeard = WaitUntil([&] {
        if (!hasCome) from.Publish("echo", "");
        return hasCome;
    });
    to.Unsubscribe(subscription);
    return isHeard;
}

void NatsPair::Settle() {
    for (int i = 0; i < 5; ++i) {
        const std::shared_ptr<nats::INatsBus> other = m_clientBus.lock();
        if (m_bus->State() != nats::INatsBus::EState::Open) break;
        Echo(*m_bus, *m_bus);
        if (other && other->State() == nats::INatsBus::EState::Open) {
            Echo(*m_bus, *other);
            if (other->State() == nats::INatsBus::EState::Open) Echo(*other, *m_bus);
        }
    }
    RunTurns(20);
}

std::unique_ptr<ChannelPair> ConnectOverNats() {
    auto pair = std::make_unique<NatsPair>();
    if (!pair->Connect()) return nullptr;
    return pair;
}

// Who comes over NATS is nobody of this machine: that would be a right.
std::vector<Transport> TransportsToTest() {
    return {Transport{"Nats", &ConnectOverNats, nullptr, {true, false, ""}, {false, false, ""}}};
}
