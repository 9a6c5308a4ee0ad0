// SPDX-License-Identifier: Apache-2.0
// What users notice of other servers and of strangers at NATS, where no accounts keep them from anything, and
// of what NATS refuses.
#include <platform/nats/session/packet.h>
#include <platform/nats/session/presence.h>
#include <tests/apps/nats/faultreport.h>
#include <tests/apps/nats/faultstage.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/platform/vtclient/faultproxy.h>
#include <tests/support/printing.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr Faults Stalled{true, false, 0, 0, 0};

class OneNode : public testing::Test {
  protected:
    void Start(const QByteArray& configuration = QByteArray(WithDisk)) {
        ASSERT_TRUE(m_nats.Start(configuration));
        ASSERT_TRUE(m_stage.StartServer(m_nats.Options()));
        for (int client = 0; client < 3; ++client)
            ASSERT_TRUE(m_stage.AddClient(m_nats.Address(QStringLiteral("tower"))));
        m_stranger = OpenBus(m_nats.Options());
        ASSERT_TRUE(m_stage.WaitForRoads(*m_stranger));
    }
    bool IsTold(const char* words) const {
        const std::vector<QString> told = m_stage.Traces().Messages();
        return std::any_of(told.begin(), told.end(),
                           [words](const QString& line) { return line.contains(QLatin1String(words)); });
    }

    NatsServer m_nats;
    FaultStage m_stage;
    std::shared_ptr<nats::INatsBus> m_stranger;
};

TEST_F(OneNode, AServerThatStartsAnewIsFollowedAlsoByWhoWasCutMeanwhile) {
    ASSERT_NO_FATAL_FAILURE(Start());
    FaultProxy proxy(m_nats.Port());
    ASSERT_TRUE(m_stage.AddClient(QStringLiteral("nats://127.0.0.1:%1/tower").arg(proxy.Port())));
    m_stage.Run(500ms);
    m_stage.TakePauses();
    proxy.SetFaults(Stalled);
    m_stage.EndServer();
    ASSERT_TRUE(m_stage.StartServer(m_nats.Options()));
    m_stage.Run(1s);
    proxy.Heal();
    ASSERT_TRUE(
        m_stage.RunUntil([this] { return m_stage.AreAllEstablished() && m_stage.CountLosses() >= 4; }));
    m_stage.Run(500ms);
    EXPECT_TRUE(m_stage.IsInOrder(false));
    Report("the server starts anew, a client is cut", m_stage, m_stage.TakePauses());
}

/// What a stranger does with what it hears, where no accounts of NATS keep it from that.
struct StrangersDeed {
    const char* name;
    const char* hears;  ///< subject
    void (*act)(nats::INatsBus& bus, const QByteArray& subject, const QByteArray& data);
    const char* line;  ///< that tells of it; empty: none
};

std::string_view DataView(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

void Refuse(nats::INatsBus& bus, const QByteArray& subject, const QByteArray&) {
    const QByteArray refusal = nats::Packet{nats::Packet::EKind::Refuse, 0, 0, {}}.Head() + "no such session";
    bus.Publish(subject, DataView(refusal));
}

void Replay(nats::INatsBus& bus, const QByteArray& subject, const QByteArray& data) {
    bus.Publish(subject, DataView(data));
}

void Forge(nats::INatsBus& bus, const QByteArray& subject, const QByteArray& data) {
    QByteArray forged = data;
    forged[forged.size() - 1] = static_cast<char>(forged[forged.size() - 1] ^ 1);
    bus.Publish(subject, DataView(forged));
}

void PoseAsAnotherStart(nats::INatsBus& bus, const QByteArray& subject, const QByteArray&) {
    nats::Presence presence;
    presence.instance = 4711;
    presence.what = nats::Presence::EWhat::Claims;  // the server itself would yield to one that holds it
    const QByteArray text = presence.Write();
    bus.Publish(subject, DataView(text));
}

class Deeds : public OneNode, public testing::WithParamInterface<StrangersDeed> {};

TEST_P(Deeds, CutNobodyAndLoseNothing) {
    ASSERT_NO_FATAL_FAILURE(Start());
    const StrangersDeed& deed = GetParam();
    int acts = 0;
    bool isActing = false;
    const int ear = m_stranger->Subscribe(deed.hears, [&](const nats::NatsMessage& message) {
        // Its own words come back to it.
        if (!isActing || ++acts % 2 == 0 || acts > 400) return;
        deed.act(*m_stranger, QByteArray(message.subject.data(), static_cast<int>(message.subject.size())),
                 QByteArray(message.data.data(), static_cast<int>(message.data.size())));
    });
    m_stranger->Flush();
    isActing = true;
    EXPECT_TRUE(m_stage.RunUntil([&] { return acts > 4; }));
    m_stage.Run(IsLong() ? 2s : 500ms);
    m_stranger->Unsubscribe(ear);
    EXPECT_TRUE(m_stage.IsInOrder(true));
    EXPECT_EQ(m_stage.CountLosses(), 0);
    EXPECT_TRUE(*deed.line == '\0' || IsTold(deed.line));
    Report(deed.name, m_stage, m_stage.TakePauses());
}

INSTANTIATE_TEST_SUITE_P(All, Deeds,
                         testing::Values(StrangersDeed{"RefusesInTheServersName", "mcs.tower.down.>", Refuse,
                                                       "Somebody else publishes in the session over NATS"},
                                         StrangersDeed{"RefusesInTheClientsName", "mcs.tower.up.>", Refuse,
                                                       "Somebody else publishes in the session over NATS"},
                                         StrangersDeed{"ReplaysSessions", "mcs.tower.down.>", Replay, ""},
                                         StrangersDeed{"ReplaysWhatClientsSay", "mcs.tower.up.>", Replay, ""},
                                         StrangersDeed{"ForgesSessions", "mcs.tower.down.>", Forge,
                                                       "Somebody else publishes in the session over NATS"},
                                         StrangersDeed{"ReplaysTheRoad", "mcs.tower.road.>", Replay, ""},
                                         StrangersDeed{"ForgesTheRoad", "mcs.tower.road.>", Forge,
                                                       "Somebody else publishes on the shared road"},
                                         StrangersDeed{"PosesAsAnotherStart", "mcs.tower.here",
                                                       PoseAsAnotherStart,
                                                       "Somebody else publishes in the session over NATS"}),
                         [](const auto& row) { return std::string(row.param.name); });

// Nobody can tell the two apart but their accounts at NATS; so it is told, and over soon.
TEST_F(OneNode, WhoClaimsToHaveHadTheStationFirstIsYieldedToAndTold) {
    ASSERT_NO_FATAL_FAILURE(Start());
    nats::Presence presence;
    presence.station = QStringLiteral("tower");
    presence.instance = 4711;
    presence.since = QStringLiteral("1999-01-01T00:00:00Z");
    const QByteArray text = presence.Write();
    m_stranger->Publish("mcs.tower.here", DataView(text));
    m_stranger->Flush();
    EXPECT_TRUE(m_stage.RunUntil([this] { return !m_stage.IsOffering(); }));
    EXPECT_TRUE(m_stage.RunUntil([this] {
        return m_stage.IsOffering() && m_stage.CountLosses() >= 3 && m_stage.AreAllEstablished();
    }));
    m_stage.Run(500ms);
    EXPECT_TRUE(m_stage.IsInOrder(false));
    Report("a stranger claims to have the station", m_stage, m_stage.TakePauses());
}

TEST_F(OneNode, ADiskWithoutRoomIsToldAndCostsNothingElse) {
    ASSERT_NO_FATAL_FAILURE(Start("jetstream { max_mem: 1MB, max_file: 1MB }\n"));
    EXPECT_TRUE(m_stage.RunUntil(
        [this] { return IsTold("NATS does not keep what is published for the station 'tower'"); }));
    EXPECT_TRUE(m_stage.IsInOrder(true));
    EXPECT_EQ(m_stage.CountLosses(), 0);
    Report("JetStream has no room", m_stage, m_stage.TakePauses());
}

TEST_F(OneNode, MessagesLargerThanNatsTakesCutNobody) {
    ASSERT_NO_FATAL_FAILURE(Start(QByteArray(WithDisk) + "max_payload: 2048\n"));
    m_stage.SetTextLength(10'000);
    m_stage.Run(300ms);
    m_stage.SetTextLength(0);
    m_stage.Run(3500ms);
    EXPECT_TRUE(m_stage.IsInOrder(false));
    EXPECT_EQ(m_stage.CountLosses(), 0);
    Report("messages larger than NATS takes", m_stage, m_stage.TakePauses());
}

}  // namespace
