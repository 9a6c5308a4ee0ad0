// SPDX-License-Identifier: Apache-2.0
// Servers and clients of values over a real server of NATS.
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/natsstation.h>
#include <platform/nats/session/sessionseal.h>
#include <platform/nats/session/subjects.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

namespace {

using nats::NatsStation;
using testing::HasSubstr;

/// A station: a server that listens on a port too.
struct Station {
    explicit Station(const NatsServer& natsServer, const char* name = "tower") {
        VtServerOptions options;
        options.port = 0;
        QString error;
        EXPECT_TRUE(server.Listen(options, &error)) << error.toStdString();
        auto bus = nats::MakeBus(natsServer.Options(), &error);
        EXPECT_NE(bus, nullptr) << error.toStdString();
        offer = std::make_unique<NatsStation>(server, bus, QString::fromLatin1(name),
                                              NatsStation::Description{QStringLiteral("the server"), {}, {}},
                                              [this](NatsStation::EState newState, const QString& newReason) {
                                                  state = newState;
                                                  reason = newReason;
                                              });
        offer->Start();
    }
    bool Is(NatsStation::EState wanted) {
        return WaitUntil([this, wanted] { return state == wanted; });
    }

    TestAccess access;
    VtServer server{access};
    std::unique_ptr<NatsStation> offer;
    NatsStation::EState state = NatsStation::EState::Connecting;
    QString reason;
};

class Stations : public testing::Test {
  protected:
    Stations() {
        m_value->SetName(QStringLiteral("Value"));
        m_tree.AddValue(QStringLiteral("/S"), m_value);
        nats::RegisterScheme();
        EXPECT_TRUE(m_nats.Start());
    }
    ~Stations() override { VtClientCenter::Instance().DestroyVtClient(m_client); }

    IVtClient* Connect(const char* station = "tower") {
        VtClientOptions options;
        options.firstRetry = std::chrono::milliseconds(1);
        options.longestRetry = std::chrono::milliseconds(50);
        options.token = QStringLiteral("secret");
        VtClientCenter::Instance().SetOptions(options);
        m_client = VtClientCenter::Instance().CreateVtClient(
            m_nats.Address(QString::fromLatin1(station)).toLatin1(), 4222);
        return m_client;
    }
    bool IsConnected() {
        return WaitUntil([this] { return m_client->IsConnected(); });
    }
    /// Somebody else at NATS.
    std::shared_ptr<nats::INatsBus> OpenBus() const {
        QString problem;
        auto bus = nats::MakeBus(m_nats.Options(), &problem);
        bus->Open(true);
        EXPECT_TRUE(WaitUntil([&bus] { return bus->State() == nats::INatsBus::EState::Open; }));
        return bus;
    }
    /// All that \a bus had published or was to hear has come, and what the others make of it.
    static void Settle(nats::INatsBus& bus) {
        for (int i = 0; i < 10; ++i) {
            bool hasCome = false;
            const int echo = bus.Subscribe("echo", [&hasCome](const nats::NatsMessage&) { hasCome = true; });
            bus.Publish("echo", "");
            EXPECT_TRUE(WaitUntil([&hasCome] { return hasCome; }));
            bus.Unsubscribe(echo);
            RunTurns(20);
        }
    }
    static std::string_view View(const QByteArray& bytes) {
        return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
    }
    QString Mirrored() const {
        auto* const item = m_tree.FindItem(QStringLiteral("/L/Value"));
        auto* const value = dynamic_cast<values::Value<QString>*>(item);
        return value != nullptr && m_client->AreAllTicsEstablished() ? value->GetValue() : QString();
    }

    const TraceRecorder m_traces;
    values::Tree m_tree;
    values::Value<QString>* m_value = new values::Value<QString>;
    NatsServer m_nats;
    IVtClient* m_client = nullptr;
};

TEST_F(Stations, AClientFollowsAndWritesOverNats) {
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    ASSERT_NE(Connect(), nullptr);
    ASSERT_TRUE(IsConnected()) << m_client->GetLastError().toStdString();
    m_client->AddTic(QStringLiteral("/L,/S"), "");
    m_value->SetValue(QStringLiteral("first"));
    EXPECT_TRUE(WaitUntil([this] { return Mirrored() == QStringLiteral("first"); }));
    dynamic_cast<values::Value<QString>*>(m_tree.FindItem(QStringLiteral("/L/Value")))
        ->SetValue(QStringLiteral("written"));
    EXPECT_TRUE(WaitUntil([this] { return m_value->GetValue() == QStringLiteral("written"); }));
    EXPECT_EQ(m_client->GetServerAddress(), m_nats.Address(QStringLiteral("tower")).mid(7));
    EXPECT_EQ(m_client->GetServerPort(), 4222);
    ASSERT_EQ(station.server.GetPeers().size(), 1U);
    EXPECT_FALSE(station.server.GetPeers().at(0).isLoopback);
    EXPECT_EQ(station.access.started.size(), 1U);
}

TEST_F(Stations, AStationThatNobodyOffersIsToldInOneLine) {
    ASSERT_NE(Connect("valley"), nullptr);
    EXPECT_TRUE(WaitUntil([this] { return !m_client->GetLastError().isEmpty(); }));
    EXPECT_EQ(m_client->GetLastError(), QStringLiteral("nobody offers the station 'valley' at NATS"));
}

TEST_F(Stations, TheSecondOfAStationHearsWhoIsThereAndHasItWhenThatHasGone) {
    auto first = std::make_unique<Station>(m_nats);
    ASSERT_TRUE(first->Is(NatsStation::EState::Offering));
    Station second(m_nats);
    ASSERT_TRUE(second.Is(NatsStation::EState::Taken));
    EXPECT_THAT(second.reason.toStdString(), HasSubstr("it is taken by the server on "));
    EXPECT_EQ(first->state, NatsStation::EState::Offering);
    first.reset();
    EXPECT_TRUE(second.Is(NatsStation::EState::Offering));
}

TEST_F(Stations, OfSeveralThatAskAtOnceOneHasIt) {
    std::vector<std::unique_ptr<Station>> stations;
    for (int i = 0; i < 5; ++i)
        stations.push_back(std::make_unique<Station>(m_nats));
    const auto count = [&stations](NatsStation::EState state) {
        return std::count_if(stations.begin(), stations.end(),
                             [state](const auto& station) { return station->state == state; });
    };
    EXPECT_TRUE(WaitUntil(
        [&] { return count(NatsStation::EState::Offering) == 1 && count(NatsStation::EState::Taken) == 4; }));
    RunTurns(100);
    EXPECT_EQ(count(NatsStation::EState::Offering), 1);
}

TEST_F(Stations, WithNatsGoneAndBackBothComeBack) {
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    Connect();
    ASSERT_TRUE(IsConnected());
    m_client->AddTic(QStringLiteral("/L,/S"), "");
    m_nats.Kill();
    EXPECT_TRUE(WaitUntil([this] { return !m_client->IsConnected(); }));
    EXPECT_TRUE(WaitUntil([&] { return station.server.GetPeers().empty(); }));
    m_value->SetValue(QStringLiteral("meanwhile"));
    ASSERT_TRUE(m_nats.Start());
    EXPECT_TRUE(IsConnected());
    EXPECT_TRUE(WaitUntil([this] { return Mirrored() == QStringLiteral("meanwhile"); }));
}

TEST_F(Stations, AServerThatStartsAnewEndsTheSessionsOfTheOldOneAtOnce) {
    auto first = std::make_unique<Station>(m_nats);
    ASSERT_TRUE(first->Is(NatsStation::EState::Offering));
    Connect();
    ASSERT_TRUE(IsConnected());
    const quint64 epoch = m_client->GetServerEpoch();
    first->offer.reset();  // its server goes on, and knows nothing of it
    Station second(m_nats);
    ASSERT_TRUE(second.Is(NatsStation::EState::Offering));
    EXPECT_TRUE(WaitUntil([&] { return m_client->IsConnected() && m_client->GetServerEpoch() != epoch; }));
}

TEST_F(Stations, HundredsThatKnockAndSayNothingKeepNobodyOut) {
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    const auto stranger = OpenBus();
    int accepted = 0;
    stranger->Subscribe("mcs.tower.down.>", [&accepted](const nats::NatsMessage&) { ++accepted; });
    const nats::Subjects subjects(QStringLiteral("tower"));
    for (int i = 0; i < 400; ++i) {
        const nats::Greeting greeting{nats::Packet::Version, 100'000, 0, nats::SessionSeal().PublicKey()};
        const QByteArray knock = nats::Packet{nats::Packet::EKind::Open, 0, 0, {}}.Head() + greeting.Write();
        stranger->Publish(subjects.Up(nats::SessionName::Draw("-")), View(knock));
    }
    EXPECT_TRUE(WaitUntil([&accepted] { return accepted >= 400; }));
    Connect();
    EXPECT_TRUE(IsConnected()) << m_client->GetLastError().toStdString();
}

// Without accounts at NATS somebody listens to all, and says all of it once more.
TEST_F(Stations, WhoReplaysWhatWasSaidGetsNothingAndStopsNobody) {
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    const auto stranger = OpenBus();
    std::vector<std::pair<QByteArray, QByteArray>> heard;
    const int ear = stranger->Subscribe("mcs.tower.up.>", [&heard](const nats::NatsMessage& message) {
        heard.emplace_back(QByteArray(message.subject.data(), static_cast<int>(message.subject.size())),
                           QByteArray(message.data.data(), static_cast<int>(message.data.size())));
    });
    Settle(*stranger);
    Connect();
    ASSERT_TRUE(IsConnected());
    m_client->AddTic(QStringLiteral("/L,/S"), "");
    EXPECT_TRUE(WaitUntil([this] { return m_client->AreAllTicsEstablished(); }));
    Settle(*stranger);
    ASSERT_GE(heard.size(), 2U);
    for (const auto& [subject, data] : heard)
        EXPECT_FALSE(data.contains("secret")) << "it is sealed";
    stranger->Unsubscribe(ear);
    const auto sessions = station.access.started.size();
    for (const auto& [subject, data] : heard)
        stranger->Publish(subject, View(data));
    Settle(*stranger);
    m_value->SetValue(QStringLiteral("after"));
    EXPECT_TRUE(WaitUntil([this] { return Mirrored() == QStringLiteral("after"); }));
    EXPECT_LE(station.access.started.size(), sessions + 1) << "nobody came in by it but the client again";
    EXPECT_EQ(station.server.GetPeers().size(), 1U);
}

TEST_F(Stations, WithNatsKilledAgainAndAgainUnderLoadBothHoldTheSameAtTheEnd) {
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    Connect();
    m_client->AddTic(QStringLiteral("/L,/S"), "");
    int number = 0;
    for (int round = 0; round < 8; ++round) {
        ASSERT_TRUE(WaitUntil([&] {
            m_value->SetValue(QString::number(++number));
            return m_client->AreAllTicsEstablished() && m_client->IsConnected();
        })) << round
            << ' ' << m_client->GetLastError().toStdString();
        for (int i = 0; i < 50; ++i) {
            m_value->SetValue(QString::number(++number));
            RunTurns(1);
        }
        m_nats.Kill();
        ASSERT_TRUE(m_nats.Start());
    }
    EXPECT_TRUE(WaitUntil([&] { return Mirrored() == QString::number(number); }));
    EXPECT_EQ(station.server.GetPeers().size(), 1U);
}

TEST_F(Stations, MessagesBeyondWhatNatsTakesAtOnceArriveWhole) {
    m_nats.Kill();
    ASSERT_TRUE(m_nats.Start("max_payload: 1024"));
    Station station(m_nats);
    ASSERT_TRUE(station.Is(NatsStation::EState::Offering));
    Connect();
    ASSERT_TRUE(IsConnected()) << m_client->GetLastError().toStdString();
    m_client->AddTic(QStringLiteral("/L,/S"), "");
    const QString large(200'000, QLatin1Char('x'));
    m_value->SetValue(large);
    EXPECT_TRUE(WaitUntil([&] { return Mirrored() == large; }));
}

TEST_F(Stations, WhatIsNoAddressIsNoClient) {
    for (const char* const address : {"nats://", "nats://hill", "nats://hill/a.b", "nats://a,,b/tower"})
        EXPECT_EQ(VtClientCenter::Instance().CreateVtClient(address, 4222), nullptr) << address;
}

}  // namespace
