// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/descriptorlimit.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QFile>
#include <QtCore/QSocketNotifier>

#include <unistd.h>

#include <memory>

namespace {

class Descriptors : public SocketEnds {
  protected:
    // Sanitizers look at the first object of a class through a descriptor, and where there is none the server
    // switches its notifier, and the test waits for events and opens a file.
    Descriptors() {
        QAbstractEventDispatcher::instance()->wakeUp();
        EXPECT_FALSE(QFile().exists());
        const auto notifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Write);
        notifier->setEnabled(false);
    }
};

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
    EXPECT_EQ(ServerLines().front(), QStringLiteral("No connection can be accepted: Too many open files"));
}

TEST_F(Descriptors, AServerThatRunsOutOfThemServesItsClientsAndAcceptsAgainLater) {
    auto* const n = Add<values::ValueNumeric<int>>("/S", "n");
    Listen();
    IVtClient* const client = Connect();
    client->AddTic(QStringLiteral("/L,/S"), "");
    ASSERT_TRUE(AreEstablished(client));
    auto* const mirrored = Find<values::ValueNumeric<int>>("/L/n");
    // Once before: sanitizers look at what is done for the first time through a descriptor.
    n->SetValue(6);
    EXPECT_TRUE(WaitUntil([mirrored] { return mirrored->GetValue() == 6; }));
    SocketPeer peer(m_server.GetPort());  // not accepted yet
    {
        const DescriptorLimit none;
        n->SetValue(7);
        EXPECT_TRUE(WaitUntil([mirrored] { return mirrored->GetValue() == 7; }));
        // Although it has accepted some before.
        EXPECT_TRUE(WaitUntil([this] { return !ServerLines().empty(); }));
    }
    ASSERT_EQ(ServerLines().size(), 1U);
    EXPECT_EQ(ServerLines().front(), QStringLiteral("No connection can be accepted: Too many open files"));
    EXPECT_TRUE(ComesIn(Connect()));
    peer.SendHello();
    EXPECT_NE(peer.WaitFor<vt::WelcomeMessage>(), nullptr);
}

TEST_F(Descriptors, AServerLeavesSomeToWhatElseTheProcessOpens) {
    Listen();
    ASSERT_TRUE(ComesIn(Connect()));
    SocketPeer peer(m_server.GetPort());
    {
        const DescriptorLimit few(3);
        EXPECT_TRUE(WaitUntil([this] { return !ServerLines().empty(); }));
        EXPECT_TRUE(QFile(QStringLiteral("/dev/null")).open(QIODevice::ReadOnly));
    }
    peer.SendHello();
    EXPECT_NE(peer.WaitFor<vt::WelcomeMessage>(), nullptr);
}

}  // namespace
