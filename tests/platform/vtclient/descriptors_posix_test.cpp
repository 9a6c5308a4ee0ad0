// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/descriptorlimit.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>

namespace {

class Descriptors : public SocketEnds {};

TEST_F(Descriptors, AServerThatHasNoneFromTheStartAcceptsWhenThereAreSome) {
    Listen();
    SocketPeer peer(m_server.GetPort());
    {
        const DescriptorLimit none;
        EXPECT_TRUE(WaitUntil([this] { return !ServerLines().empty(); }));
    }
    EXPECT_TRUE(ComesIn(Connect()));
    peer.SendHello();
    EXPECT_NE(peer.WaitFor<vt::WelcomeMessage>(), nullptr);
    ASSERT_EQ(ServerLines().size(), 1U) << "one line, however long it lasts";
    EXPECT_EQ(ServerLines().front(), QStringLiteral("No connection can be accepted: Out of resources"));
}

TEST_F(Descriptors, AServerThatRunsOutOfThemServesItsClientsAndAcceptsAgainLater) {
    auto* const n = Add<values::ValueNumeric<int>>("/S", "n");
    Listen();
    IVtClient* const client = Connect();
    client->AddTic(QStringLiteral("/L,/S"), "");
    ASSERT_TRUE(AreEstablished(client));
    SocketPeer peer(m_server.GetPort());
    auto* const mirrored = Find<values::ValueNumeric<int>>("/L/n");
    // Once before: sanitizers look at what is done for the first time through a descriptor.
    n->SetValue(6);
    EXPECT_TRUE(WaitUntil([mirrored] { return mirrored->GetValue() == 6; }));
    {
        const DescriptorLimit none;
        n->SetValue(7);
        EXPECT_TRUE(WaitUntil([mirrored] { return mirrored->GetValue() == 7; }));
    }
    EXPECT_TRUE(ComesIn(Connect()));
    peer.SendHello();
    EXPECT_NE(peer.WaitFor<vt::WelcomeMessage>(), nullptr);
}

}  // namespace
