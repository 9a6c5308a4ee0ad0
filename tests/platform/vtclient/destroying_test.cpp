// SPDX-License-Identifier: Apache-2.0
// Clients and servers that are destroyed by those whom they tell something.
#include <tests/platform/vtclient/socketends.h>
#include <tests/support/recordingobserver.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace {

class DestroyingOn : public SocketEnds, public testing::WithParamInterface<TChangeCode> {};

TEST_P(DestroyingOn, WhatItTellsInADialogLetsTheCallUnderWayEndFirst) {
    Add<values::Value<int>>("/S", "n");
    Listen();
    IVtClient* client = Connect();
    client->AddTic(QStringLiteral("/L,/S"), "");
    bool isAliveAfterwards = false;
    RecordingObserver observer([&](Observable* /*source*/, TChangeCode code) {
        if (code != GetParam() || client == nullptr) return;
        const ObservableGuard guard(*client);
        Destroy(std::exchange(client, nullptr));
        RunTurns(20);  // as in a dialog
        isAliveAfterwards = guard.IsAlive();
    });
    client->AddObserver(&observer);
    ASSERT_TRUE(WaitUntil([this] { return !m_access.started.empty(); }));
    if (GetParam() == connectioncode::Disconnected) m_server.Close(QStringLiteral("back soon"));
    ASSERT_TRUE(WaitUntil([&observer] { return observer.Count(GetParam()) != 0; }));
    EXPECT_TRUE(isAliveAfterwards) << "its call still is under way";
    EXPECT_EQ(observer.Count(connectioncode::GoingAway), 1);
    EXPECT_TRUE(WaitUntil([this] { return m_access.ended.size() == 1; }));
    RunTurns(20);
}

INSTANTIATE_TEST_SUITE_P(, DestroyingOn,
                         testing::Values(connectioncode::Connected, connectioncode::TicsChanged,
                                         connectioncode::Disconnected),
                         [](const auto& row) { return "Code" + std::to_string(row.param); });

/// Lets everybody do everything, and does something itself in the operation that the test names.
class ActingAccess final : public IVtAccess {
  public:
    bool NeedsCredentials() const override { return false; }
    bool Admit(VtPeer& /*peer*/, const QString& /*user*/, const QString& /*token*/,
               QString* /*reason*/) override {
        return Act("Admit");
    }
    bool MayRead(const VtPeer& /*peer*/, const QString& /*path*/) override { return Act("MayRead"); }
    bool MayWrite(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) override {
        return Act("MayWrite");
    }
    bool MayCreate(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) override {
        return Act("MayCreate");
    }
    QStringList WritablePrefixes(const VtPeer& /*peer*/) override {
        Act("WritablePrefixes");
        return {QStringLiteral("/")};
    }
    void SessionStarted(const VtPeer& /*peer*/) override {
        ++started;
        Act("SessionStarted");
    }
    void SessionEnded(const VtPeer& /*peer*/) override {
        ++ended;
        Act("SessionEnded");
    }
    QString ProvideNode(const VtPeer& /*peer*/, const QString& path) override {
        Act(path == QLatin1String("/S") ? "ProvideNode" : "ProvideNodeToCreate");
        return QString();
    }
    void NodeReleased(const VtPeer& /*peer*/, const QString& /*path*/) override { Act("NodeReleased"); }
    void ValueWritten(const VtPeer& /*peer*/, const QString& /*path*/) override { Act("ValueWritten"); }

    bool Act(const std::string& operation) {
        if (operation == when && action) std::exchange(action, nullptr)();
        return true;
    }

    std::string when;
    std::function<void()> action;
    int started = 0, ended = 0;
};

enum class Deed { Closed, Destroyed, ClosedInADialog };

/// A server that ends in the middle of what a client wants, which reads, writes, creates, lets go and leaves.
class ServersThatEnd : public SocketEnds, public testing::WithParamInterface<std::tuple<const char*, Deed>> {
  protected:
    ServersThatEnd() {
        m_access.when = std::get<0>(GetParam());
        m_access.action = [this] { End(); };
        m_value->AddObserver(&m_observer);
        m_observer.React([this](Observable*, TChangeCode code) {
            if (code == changecode::ContentChanged) m_access.Act("Content");
        });
        QString error;
        EXPECT_TRUE(m_ending->Listen(m_serverOptions, &error)) << error.toStdString();
    }
    ~ServersThatEnd() override { m_value->DeleteObserver(&m_observer); }

    void End() {
        const Deed deed = std::get<1>(GetParam());
        if (deed == Deed::Destroyed) return m_ending.reset();
        m_ending->Close(QStringLiteral("in the middle"));
        if (deed == Deed::ClosedInADialog) RunTurns(20);
    }
    bool HasEnded() const { return !m_access.action; }

    ActingAccess m_access;
    std::unique_ptr<VtServer> m_ending = std::make_unique<VtServer>(m_access);
    values::Value<int>* m_value = Add<values::Value<int>>("/S", "n");
    RecordingObserver m_observer;
};

TEST_P(ServersThatEnd, LetTheCallUnderWayEndFirst) {
    IVtClient* const client = Connect("127.0.0.1", m_ending->GetPort());
    IVtTic* const tic = client->AddTic(QStringLiteral("/L,/S"), "");
    EXPECT_TRUE(WaitUntil([&] { return HasEnded() || client->AreAllTicsEstablished(); }));
    if (!HasEnded()) {
        Find<values::Value<int>>("/L/n")->SetValue(5);
        m_tree.ProvideNode(QStringLiteral("/L/created"));
        EXPECT_TRUE(WaitUntil([&] { return HasEnded() || !client->HasUnansweredWrites(); }));
    }
    client->RemoveTic(tic);
    if (!HasEnded()) RunTurns(20);
    Destroy(client);
    EXPECT_TRUE(WaitUntil([this] { return HasEnded(); }));
    EXPECT_EQ(m_access.ended, m_access.started);
    RunTurns(20);
}

std::string NameOf(const testing::TestParamInfo<std::tuple<const char*, Deed>>& row) {
    const char* const deeds[] = {"Closed", "Destroyed", "ClosedInADialog"};
    return std::string(deeds[static_cast<int>(std::get<1>(row.param))]) + "On" + std::get<0>(row.param);
}

INSTANTIATE_TEST_SUITE_P(
    , ServersThatEnd,
    testing::Combine(testing::Values("Admit", "SessionStarted", "MayRead", "ProvideNode", "WritablePrefixes",
                                     "MayWrite", "Content", "ValueWritten", "ProvideNodeToCreate",
                                     "MayCreate", "NodeReleased", "SessionEnded"),
                     testing::Values(Deed::Closed, Deed::Destroyed, Deed::ClosedInADialog)),
    NameOf);

TEST_F(SocketEnds, ASessionEndedInADialogOfItsOwnWriteLastsUntilThatIsHandled) {
    auto* const value = Add<values::Value<int>>("/S", "n");
    Listen();
    IVtClient* const client = Connect();
    client->AddTic(QStringLiteral("/L,/S"), "");
    ASSERT_TRUE(AreEstablished(client));
    std::size_t endedInTheDialog = 99;
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code != changecode::ContentChanged) return;
        m_server.EndSession(m_server.GetPeers().front().session, QStringLiteral("go"));
        RunTurns(20);
        endedInTheDialog = m_access.ended.size();
    });
    value->AddObserver(&observer);
    Find<values::Value<int>>("/L/n")->SetValue(5);
    EXPECT_TRUE(WaitUntil([&] { return m_access.ended.size() == 1; }));
    EXPECT_EQ(endedInTheDialog, 0U);
    EXPECT_EQ(value->GetValue(), 5);
    value->DeleteObserver(&observer);
}

}  // namespace
