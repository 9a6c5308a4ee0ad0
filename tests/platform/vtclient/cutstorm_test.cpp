// SPDX-License-Identifier: Apache-2.0
// Cut after cut, at any moment, while both sides do all that they can.
#include <tests/platform/vtclient/certificates.h>
#include <tests/platform/vtclient/network.h>
#include <tests/platform/vtclient/occurrences.h>
#include <tests/platform/vtclient/spectators.h>
#include <tests/support/recordingobserver.h>

namespace {

using Text = values::Value<QString>;

struct Weather {
    const char* name;
    bool isTls;
    int cuts;
    unsigned seed;
};

class CutStorm : public Network, public testing::WithParamInterface<Weather> {
  protected:
    CutStorm() : m_random(GetParam().seed), m_spectators(GetParam().seed) {
        m_device = RandomEdits(QStringLiteral("/S"), RandomEdits::ERole::Device, GetParam().seed);
        m_operator = RandomEdits(QStringLiteral("/L"), RandomEdits::ERole::Operator, GetParam().seed);
    }

    int Chance(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    ~CutStorm() override {
        if (m_client != nullptr) m_client->DeleteObserver(&m_observer);
    }

    void SetUp() override {
        if (GetParam().isTls) {
            ASSERT_EQ(Certificates::Instance().Error(), QString());
            m_serverOptions.certificateFile = Certificates::Instance().File("server.pem");
            m_serverOptions.privateKeyFile = Certificates::Instance().File("server.key");
            m_clientOptions.caFile = Certificates::Instance().File("authority.pem");
        }
        m_clientOptions.longestRetry = std::chrono::milliseconds(4);
        ListenBehindTheNetwork();
        m_client = ConnectThroughTheNetwork(GetParam().isTls ? "mcss://127.0.0.1" : "127.0.0.1");
        ASSERT_TRUE(ComeToRest(m_client));
        m_client->AddObserver(&m_observer);
        m_log.Hear(Find<Text>("/L/log"));
        m_notes.Hear(Find<Text>("/S/notes"));
    }

    /// Which connection is up, counted from 1; 0 while none is.
    int Connection() const {
        const bool isUp = m_client->AreAllTicsEstablished();
        return isUp ? m_observer.Count(connectioncode::Disconnected) + 1 : 0;
    }

    /// Both sides act, and a turn passes.
    void Act() {
        for (int i = Chance(4); i > 0; --i)
            m_device.Step();
        for (int i = Chance(3); i > 0; --i)
            m_operator.Step();
        const int connection = Connection();
        if (Chance(2) == 0) m_log.Send(Find<Text>("/S/log"), connection);
        if (Chance(2) == 0 && Find<Text>("/L/notes") != nullptr)
            m_notes.Send(Find<Text>("/L/notes"), connection);
        if (Chance(10) == 0) m_spectators.Move(Item("/L"));
        RunTurns(1);
    }
    void ActFor(int turns) {
        for (int i = 0; i < turns; ++i)
            Act();
    }

    /// Ends the connection somehow, at once or soon.
    void CutSomehow() {
        switch (Chance(5)) {
            case 0:
                for (const VtPeer& peer : m_server.GetPeers())
                    m_server.EndSession(peer.session, QStringLiteral("go"));
                return;
            case 1:
                m_proxy->Cut();
                // And the next ones do not get far either.
                return m_proxy->CutNext(Chance(2) == 0 ? EDirection::ToServer : EDirection::ToClient,
                                        Chance(3000), 1 + Chance(3));
            case 2: {
                Faults torn;
                torn.chunk = 1 + Chance(10);
                m_proxy->SetFaults(torn);
                ActFor(5);
                return m_proxy->Cut();
            }
            case 3: {
                Faults stalled;
                stalled.isStalled = true;
                m_proxy->SetFaults(Chance(2) == 0 ? EDirection::ToServer : EDirection::ToClient, stalled);
                ActFor(5);
                m_proxy->Cut();
                return m_proxy->SetFaults(Faults());
            }
            default:
                return m_proxy->Cut();
        }
    }

    bool ActUntilCut(int losses) {
        return WaitUntil([this, losses] {
            if (m_observer.Count(connectioncode::Disconnected) > losses) return true;
            Act();
            return false;
        });
    }
    /// Acts on until the connection is up again.
    bool ActUntilEstablished() {
        return WaitUntil([this] {
            if (m_client->AreAllTicsEstablished()) return true;
            Act();
            return false;
        });
    }

    std::mt19937 m_random;
    IVtClient* m_client = nullptr;
    RecordingObserver m_observer;
    Occurrences m_log;    ///< from the server to the client
    Occurrences m_notes;  ///< and back
    Spectators m_spectators;
};

TEST_P(CutStorm, LeavesBothSidesAlikeAndNothingLost) {
    for (int cut = 0; cut < GetParam().cuts; ++cut) {
        SCOPED_TRACE(testing::Message() << "cut " << cut << " of seed " << GetParam().seed);
        const int losses = m_observer.Count(connectioncode::Disconnected);
        const std::size_t logged = m_log.CountSent();
        const std::size_t noted = m_notes.CountSent();
        ActFor(Chance(15));
        if (Chance(2) == 0) {
            ASSERT_TRUE(ComeToRest(m_client));
            EXPECT_TRUE(m_log.HaveArrivedAfter(logged));
            EXPECT_TRUE(m_notes.HaveArrivedAfter(noted));
            ActFor(Chance(5));
        }
        CutSomehow();
        if (Chance(2) == 0) ActFor(Chance(5));
        ASSERT_TRUE(ActUntilCut(losses));
        ASSERT_TRUE(ActUntilEstablished());
        m_proxy->Heal();
        ASSERT_TRUE(ComeToRest(m_client));
        ASSERT_TRUE(m_log.AreInOrder(true));
        ASSERT_TRUE(m_notes.AreInOrder(false));
        ASSERT_EQ(m_spectators.CountStrayCalls(), 0);
    }
    EXPECT_GT(m_log.CountHeard(), static_cast<std::size_t>(GetParam().cuts));
    EXPECT_GT(m_notes.CountHeard(), static_cast<std::size_t>(GetParam().cuts));
    EXPECT_GT(m_spectators.CountCalls(), GetParam().cuts);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_server.GetPeers().size(), 1U);
    EXPECT_EQ(m_access.started.size(), m_access.ended.size() + 1);
    EXPECT_EQ(m_proxy->CountLinks(), 1);
}

INSTANTIATE_TEST_SUITE_P(Network, CutStorm,
                         testing::Values(Weather{"OverTcp", false, 200, 1},
                                         Weather{"OverTcpAgain", false, 200, 2},
                                         Weather{"OverTls", true, 100, 3}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
