// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/faultproxy.h>
#include <tests/platform/vtclient/randomedits.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/treesequal.h>

#include <memory>

/// A server with a device's subtree /S, a client that mirrors it at /L, an operator there, and a network
/// between the two that may be bad.
class Network : public SocketEnds {
  protected:
    Network() {
        m_device.MakeTree();
        for (int i = 0; i < 100; ++i)
            m_device.Step();
    }
    ~Network() override { m_proxy.reset(); }

    /// The server, and the network to it.
    void ListenBehindTheNetwork() {
        Listen();
        m_proxy = std::make_unique<FaultProxy>(m_server.GetPort());
        ASSERT_NE(m_proxy->Port(), 0);
    }
    IVtClient* ConnectThroughTheNetwork(const char* address = "127.0.0.1") {
        IVtClient* const client = Connect(address, m_proxy->Port());
        client->AddTic(QStringLiteral("/L,/S"), "");
        return client;
    }
    testing::AssertionResult AreAlike() { return AreEqual(Item("/S"), Item("/L")); }
    /// Everything that either side did has arrived, and both hold the same.
    testing::AssertionResult ComeToRest(IVtClient* client) {
        const bool isAtRest = WaitUntil([this, client] {
            return client->AreAllTicsEstablished() && !client->HasUnansweredWrites() && AreAlike();
        });
        if (isAtRest) return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "connected " << client->IsConnected() << ", established " << client->AreAllTicsEstablished()
               << ", unanswered " << client->HasUnansweredWrites() << ", last error "
               << client->GetLastError().toStdString() << ", " << AreAlike().message();
    }

    RandomEdits m_device{QStringLiteral("/S"), RandomEdits::ERole::Device, 1};
    RandomEdits m_operator{QStringLiteral("/L"), RandomEdits::ERole::Operator, 2};
    std::unique_ptr<FaultProxy> m_proxy;
};
