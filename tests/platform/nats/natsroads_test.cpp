// SPDX-License-Identifier: Apache-2.0
// Shared roads over a real server of NATS, and what JetStream keeps of them.
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/natsstation.h>
#include <platform/nats/roads/natsroads.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>
#include <tests/platform/nats/memorybus.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <numeric>

using namespace std::chrono_literals;
using testing::IsEmpty;

namespace {

using values::Value;
using Number = Value<int>;
using Text = Value<QString>;

const QString Station = QStringLiteral("tower");
const QByteArray KeepsRoads = "jetstream: { max_mem: 64MB, max_file: 1GB }\n";

std::shared_ptr<nats::INatsBus> OpenBus(const NatsServer& server) {
    QString problem;
    auto bus = nats::MakeBus(server.Options(), &problem);
    bus->Open(true);
    EXPECT_TRUE(WaitUntil([&] { return bus->State() == nats::INatsBus::EState::Open; }))
        << problem.toStdString();
    return bus;
}

// What is kept --------------------------------------------------------------------------------------------

/// Keeps the numbers that come.
class Numbers final : public vt::IRoads::IListener {
  public:
    void OnRoadMessage(const char* data, qint64 size, bool isFetched) override {
        (isFetched ? fetched : heard).push_back(vt::NumberOnRoad(data, size).value_or(0));
    }
    void OnRoadInputDone() override { ++done; }
    void OnFetched() override { isOver = true; }

    std::vector<quint64> heard, fetched;
    int done = 0;
    bool isOver = false;
};

class KeptRoads : public testing::Test {
  protected:
    void Start(const QByteArray& configuration) {
        ASSERT_TRUE(m_nats.Start(configuration));
        m_bus = OpenBus(m_nats);
        m_server = std::make_unique<nats::NatsRoads>(m_bus, Station, nats::NatsRoads::ERole::Server);
        m_client =
            std::make_unique<nats::NatsRoads>(OpenBus(m_nats), Station, nats::NatsRoads::ERole::Client);
        m_client->Listen(QStringLiteral("a"), &m_numbers);
        WaitUntil([this] {  // until the stream is there, and we are known to listen
            Publish("a", 1);
            RunTurns(5);
            return m_numbers.heard.size() > 50;
        });
        m_numbers.heard.clear();
    }
    void Publish(const char* road, quint64 number) {
        QByteArray message = QByteArray("\1\0\0\0\1\0\0\0\0\0\0", 11) + QByteArray(2 + 16, '\0');
        message[11] = static_cast<char>(number >> 8);
        message[12] = static_cast<char>(number & 0xff);
        EXPECT_TRUE(m_server->Publish(QString::fromLatin1(road),
                                      {message.constData(), static_cast<std::size_t>(message.size())}));
        m_bus->Flush();
    }
    std::vector<quint64> Fetch(quint64 from, quint64 to) {
        m_numbers.fetched.clear();
        m_numbers.isOver = false;
        EXPECT_TRUE(m_client->Fetch(&m_numbers, from, to));
        EXPECT_TRUE(WaitUntil([this] { return m_numbers.isOver; }));
        return m_numbers.fetched;
    }
    static std::vector<quint64> From(quint64 first, quint64 last) {
        std::vector<quint64> numbers(static_cast<std::size_t>(last - first + 1));
        std::iota(numbers.begin(), numbers.end(), first);
        return numbers;
    }

    NatsServer m_nats;
    std::shared_ptr<nats::INatsBus> m_bus;
    std::unique_ptr<nats::NatsRoads> m_server;
    std::unique_ptr<nats::NatsRoads> m_client;
    Numbers m_numbers;
};

TEST_F(KeptRoads, AreFoundByTheirNumbers) {
    Start(KeepsRoads);
    for (quint64 number = 2; number <= 300; ++number)
        Publish("a", number);
    ASSERT_TRUE(WaitUntil([this] { return !m_numbers.heard.empty() && m_numbers.heard.back() == 300; }));
    EXPECT_EQ(Fetch(100, 110), From(100, 110));
    EXPECT_EQ(Fetch(2, 3), From(2, 3));
    EXPECT_EQ(Fetch(300, 300), From(300, 300));
    EXPECT_EQ(Fetch(298, 900), From(298, 300)) << "as far as there are any";
    EXPECT_THAT(Fetch(301, 310), IsEmpty()) << "not said yet";
}

TEST_F(KeptRoads, AreFoundAmongManyOthers) {
    Start(KeepsRoads);
    quint64 other = 2;
    for (quint64 number = 2; number <= 60; ++number) {
        for (quint64 i = 0; i < number % 13; ++i)
            Publish("b", other++);
        Publish("a", number);
    }
    ASSERT_TRUE(WaitUntil([this] { return !m_numbers.heard.empty() && m_numbers.heard.back() == 60; }));
    for (quint64 first = 2; first <= 60; first += 7)
        EXPECT_EQ(Fetch(first, first + 4), From(first, std::min<quint64>(first + 4, 60))) << first;
}

// As when the nodes of a cluster have only just met.
TEST_F(KeptRoads, AreKeptOnceThereIsWhoKeepsThem) {
    const TraceRecorder traces;
    Start("");
    const auto isTold = [&traces](const char* words) {
        return WaitUntil(
            [&] {
                const std::vector<QString> told = traces.Messages();
                return std::any_of(told.begin(), told.end(), [words](const QString& line) {
                    return line.startsWith(QLatin1String(words));
                });
            },
            20000);
    };
    ASSERT_TRUE(
        isTold("NATS does not keep what is published for the station 'tower' (this NATS has no JetStream)"));
    m_nats.Reload(KeepsRoads);
    ASSERT_TRUE(isTold("NATS keeps what is published for the station 'tower'"));
    Publish("a", 7);
    EXPECT_TRUE(WaitUntil([this] { return Fetch(7, 7) == From(7, 7); })) << "it is kept a moment later";
}

TEST_F(KeptRoads, AreNotThereWithoutJetStream) {
    Start("");
    EXPECT_THAT(Fetch(1, 10), IsEmpty());
}

// What NATS does not take ----------------------------------------------------------------------------------

TEST(UnsentRoads, AreToldOfOnceAndGoOn) {
    const auto bus = std::make_shared<MemoryBus>();
    bus->Open(true);
    nats::NatsRoads roads(bus, Station, nats::NatsRoads::ERole::Server);
    const QByteArray message = QByteArray("\1\0\0\0\1\0\0\0\0\0\0\0\1", 13) + QByteArray(16, 'x');
    const auto publish = [&] {
        return roads.Publish(QStringLiteral("a"),
                             {message.constData(), static_cast<std::size_t>(message.size())});
    };
    const TraceRecorder traces;
    EXPECT_TRUE(publish());
    bus->unsent = (16 << 20) + 1;
    for (int i = 0; i < 5; ++i)
        EXPECT_FALSE(publish());
    bus->unsent = 15 << 20;
    EXPECT_FALSE(publish()) << "not for every message that left";
    ASSERT_EQ(traces.Messages().size(), 1U);
    EXPECT_EQ(traces.Messages()[0],
              QStringLiteral(
                  "NATS does not take what is published for the station 'tower' (16 MiB wait): what "
                  "changes is lost by the roads until it does, and who follows them takes a new snapshot"));
    bus->unsent = 1 << 20;
    EXPECT_TRUE(publish());
    ASSERT_EQ(traces.Messages().size(), 2U);
    EXPECT_EQ(
        traces.Messages()[1],
        QStringLiteral("NATS takes again what is published for the station 'tower': 6 messages were lost"));
}

// The whole of it -----------------------------------------------------------------------------------------

class Roads : public testing::Test {
  protected:
    Roads() { nats::RegisterScheme(); }
    ~Roads() override {
        VtClientCenter::Instance().DestroyVtClient(m_client);
        m_vtServer.Close(QStringLiteral("the end"));
        m_station.reset();
    }
    void Start(const QByteArray& configuration) {
        ASSERT_TRUE(m_nats.Start(configuration));
        m_number = Add<Number>("number");
        m_log = Add<Text>("log");
        m_log->SetDelivery(values::EDelivery::EveryChange);
        VtServerOptions options;
        options.port = 0;
        QString error;
        ASSERT_TRUE(m_vtServer.Listen(options, &error)) << error.toStdString();
        m_bus = OpenBus(m_nats);
        m_station = std::make_unique<nats::NatsStation>(
            m_vtServer, m_bus, Station, nats::NatsStation::Description{QStringLiteral("test"), {}, {}},
            [this](nats::NatsStation::EState state, const QString&) {
                m_isOffering = state == nats::NatsStation::EState::Offering;
            });
        m_station->Start();
        ASSERT_TRUE(WaitUntil([this] { return m_isOffering; }));
        m_spy = OpenBus(m_nats);
        m_spy->Subscribe("mcs.tower.road.>", [this](const nats::NatsMessage&) { ++m_published; });
        VtClientOptions quick;
        quick.firstRetry = 1ms;
        quick.longestRetry = 50ms;
        VtClientCenter::Instance().SetOptions(quick);
        m_client =
            VtClientCenter::Instance().CreateVtClient(m_nats.Address(Station).toLatin1().constData(), 4222);
        ASSERT_NE(m_client, nullptr);
        m_tic = m_client->AddTic(QStringLiteral("/L,/S"), "");
        ASSERT_TRUE(WaitUntil([this] { return m_tic->IsEstablished(); }));
    }
    template <class V>
    V* Add(const char* name) {
        auto* const value = new V();
        value->SetName(QString::fromLatin1(name));
        EXPECT_TRUE(m_tree.AddValue(QStringLiteral("/S"), value));
        return value;
    }
    template <class V>
    V* Mirrored(const char* path) {
        return dynamic_cast<V*>(m_tree.FindItem(QString::fromLatin1(path)));
    }
    bool AreAlike() {
        return WaitUntil([this] {
            const auto* const number = Mirrored<Number>("/L/number");
            const auto* const log = Mirrored<Text>("/L/log");
            return number != nullptr && log != nullptr && number->GetState() == values::Valid &&
                   number->GetValue() == m_number->GetValue() && log->GetValue() == m_log->GetValue();
        });
    }
    bool m_isOffering = false;  ///< told by the station as long as that lives
    /// Until a change is seen on the road: before, it comes in the session.
    bool IsOnTheRoad() {
        return WaitUntil([this] {
            const int before = m_published;
            m_log->SetValue(QString(2000, QLatin1Char('x')));
            RunTurns(20);
            return m_published > before && m_published > 3;
        });
    }

    values::Tree m_tree;
    NatsServer m_nats;
    TestAccess m_access;
    VtServer m_vtServer{m_access};
    std::shared_ptr<nats::INatsBus> m_bus, m_spy;
    std::unique_ptr<nats::NatsStation> m_station;
    IVtClient* m_client = nullptr;
    IVtTic* m_tic = nullptr;
    Number* m_number = nullptr;
    Text* m_log = nullptr;
    int m_published = 0;
};

TEST_F(Roads, CarryWhatChanges) {
    Start(KeepsRoads);
    ASSERT_TRUE(IsOnTheRoad());
    for (int i = 1; i <= 100; ++i) {
        m_number->SetValue(i);
        RunTurns(2);
    }
    EXPECT_TRUE(AreAlike());
}

TEST_F(Roads, AreCounted) {
    Start(KeepsRoads);
    ASSERT_TRUE(IsOnTheRoad());
    ASSERT_TRUE(WaitUntil([this] { return m_station->GetFigures().isKept; }));
    const nats::NatsStation::Figures before = m_station->GetFigures();
    EXPECT_TRUE(before.isConnected);
    EXPECT_EQ(before.server, QStringLiteral("127.0.0.1:%1").arg(m_nats.Port()));
    EXPECT_EQ(before.problem, QString());
    EXPECT_EQ(before.sessions, 1);
    EXPECT_EQ(before.roads.roads, 1);
    EXPECT_EQ(before.roads.followers, 1);
    EXPECT_EQ(before.roads.taken, 1U);
    EXPECT_EQ(before.roads.givenUp, 0U);
    EXPECT_EQ(before.lostSessions, 0U);
    EXPECT_GE(before.messages, static_cast<quint64>(m_published));
    m_log->SetValue(QString(5'000, QLatin1Char('z')));
    ASSERT_TRUE(AreAlike());
    const nats::NatsStation::Figures after = m_station->GetFigures();
    EXPECT_GT(after.messages, before.messages);
    EXPECT_GE(after.bytes, before.bytes + 5'000);
    EXPECT_EQ(after.lost, 0U);
    m_nats.Kill();
    ASSERT_TRUE(WaitUntil([this] { return !m_station->GetFigures().isConnected; }));
    EXPECT_EQ(m_station->GetFigures().server, QString());
    EXPECT_NE(m_station->GetFigures().problem, QString());
    EXPECT_FALSE(m_station->GetFigures().isKept);
    EXPECT_TRUE(WaitUntil([this] { return m_station->GetFigures().lostSessions == 1; }));
}

TEST_F(Roads, CarryContentsBeyondWhatNatsTakesInOneMessage) {
    const TraceRecorder traces;
    Start("max_payload: 2048\n" + KeepsRoads);
    ASSERT_TRUE(IsOnTheRoad());
    for (const int length : {1'000, 10'000, 300'000}) {
        const int before = m_published;
        m_log->SetValue(QString(length, QLatin1Char('z')));
        m_number->SetValue(length);
        EXPECT_TRUE(AreAlike()) << length;
        EXPECT_TRUE(WaitUntil([&] { return m_published - before >= length / 2048; })) << length;
    }
    EXPECT_TRUE(m_tic->IsEstablished());
    for (const QString& line : traces.Messages())
        EXPECT_FALSE(line.contains(QStringLiteral("is given up"))) << line.toStdString();
}

TEST_F(Roads, AreTakenUpAgainAfterNatsWasKilled) {
    Start(KeepsRoads);
    ASSERT_TRUE(IsOnTheRoad());
    m_nats.Kill();
    ASSERT_TRUE(WaitUntil([this] { return !m_client->IsConnected(); }));
    m_number->SetValue(77);
    ASSERT_TRUE(m_nats.Start(KeepsRoads));
    ASSERT_TRUE(WaitUntil([this] { return m_tic->IsEstablished(); }, 30000));
    EXPECT_TRUE(AreAlike());
    EXPECT_TRUE(IsOnTheRoad());
    m_number->SetValue(78);
    EXPECT_TRUE(AreAlike());
}

TEST_F(Roads, DropWhatStrangersPublish) {
    Start("");
    ASSERT_TRUE(IsOnTheRoad());
    QByteArray subject;
    m_spy->Subscribe("mcs.tower.road.>", [&](const nats::NatsMessage& message) {
        subject = QByteArray(message.subject.data(), static_cast<int>(message.subject.size()));
    });
    ASSERT_TRUE(WaitUntil([&] {
        m_log->SetValue(QStringLiteral("y"));
        RunTurns(10);
        return !subject.isEmpty();
    }));
    TraceRecorder traces;
    for (int i = 0; i < 100; ++i)
        m_spy->Publish(subject, "rubbish");
    m_spy->Flush();
    ASSERT_TRUE(WaitUntil([&] { return !traces.Messages().empty(); }));
    EXPECT_TRUE(traces.Messages()[0].startsWith(
        QStringLiteral("Somebody else publishes on the shared road of '/S'")));
    m_number->SetValue(5);
    EXPECT_TRUE(AreAlike());
    EXPECT_TRUE(m_tic->IsEstablished());
    EXPECT_EQ(traces.Messages().size(), 1U);
}

}  // namespace
