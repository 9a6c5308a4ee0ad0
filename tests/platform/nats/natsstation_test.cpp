// SPDX-License-Identifier: Apache-2.0
// Servers and clients of values over a real server of NATS.
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/natsstation.h>
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
                                              NatsStation::Description{QStringLiteral("the server"), {}},
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
