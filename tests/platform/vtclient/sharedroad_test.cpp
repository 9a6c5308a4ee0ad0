// SPDX-License-Identifier: Apache-2.0
// What is said of a subtree goes by one shared road to all who follow it, and each of them sees what it would
// see if it were told in its session.
#include <tests/platform/vtclient/occurrences.h>
#include <tests/platform/vtclient/roadends.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using values::Value;
using Number = Value<int>;
using Text = Value<QString>;

class SharedRoad : public RoadEnds {
  protected:
    SharedRoad() {
        m_number = Add<Number>("/S", "number");
        m_log = Add<Text>("/S", "log");
        m_log->SetDelivery(values::EDelivery::EveryChange);
    }
    /// How many messages went by the only road that there is.
    std::size_t CountPublished() const { return m_bus.published.size(); }

    Number* m_number = nullptr;
    Text* m_log = nullptr;
};

TEST_F(SharedRoad, SaysWhatChangesOnceWhoeverFollows) {
    std::vector<Rider> riders;
    for (int i = 0; i < 5; ++i)
        riders.push_back(AddRider());
    Ride();
    const std::size_t before = CountPublished();
    for (const Rider& rider : riders)
        rider.end->isReading = false;  // their sessions
    m_number->SetValue(7);
    Settle();
    EXPECT_EQ(CountPublished(), before + 1);
    for (const Rider& rider : riders) {
        EXPECT_EQ(InSession(rider), 0) << "changes come by the road alone";
        EXPECT_TRUE(IsEqual(rider));
    }
}

TEST_F(SharedRoad, TellsThoseWithoutItInTheirSessionsAsEver) {
    const Rider rider = AddRider();
    const Rider other = AddRider(false);
    Ride();
    m_number->SetValue(7);
    Settle();
    EXPECT_TRUE(IsEqual(rider));
    EXPECT_TRUE(IsEqual(other));
    EXPECT_EQ(other.bus->CountListeners(), 0U);
}

TEST_F(SharedRoad, IsNotUsedByAServerThatHasNone) {
    m_settings.roads = nullptr;
    KillServer();
    StartServer();
    const Rider rider = AddRider();
    Ride();
    m_number->SetValue(7);
    Settle();
    EXPECT_TRUE(IsEqual(rider));
    EXPECT_EQ(CountPublished(), 0U);
}

TEST_F(SharedRoad, IsTakenOnlyByWhoeverHearsIt) {
    const Rider deaf = AddRider();
    deaf.bus->fate = [](const QByteArray&) { return 0; };
    const Rider rider = AddRider();
    Ride();
    m_number->SetValue(7);
    m_log->SetValue(QStringLiteral("one"));
    Settle();
    EXPECT_TRUE(IsEqual(deaf));
    EXPECT_TRUE(IsEqual(rider));
    TraceRecorder traces;
    PassSlowly(20s);
    ASSERT_EQ(traces.Messages().size(), 1U);
    EXPECT_EQ(traces.Messages()[0],
              QStringLiteral("The shared road of '/S' is given up: nothing comes by it: "
                             "staying with the session"));
    EXPECT_TRUE(deaf.tic->IsEstablished());
    deaf.bus->fate = [](const QByteArray&) { return 1; };
    PassSlowly(20s);
    deaf.end->isReading = false;
    m_number->SetValue(8);
    Settle();
    EXPECT_TRUE(IsEqual(deaf)) << "it is tried again later";
}

TEST_F(SharedRoad, HasNothingOnItThatSaysWhatItMeans) {
    const Rider rider = AddRider();
    Ride();
    m_log->SetValue(QStringLiteral("a secret of the tower"));
    Settle();
    for (const auto& one : m_bus.published)
        EXPECT_FALSE(one.message.contains("secret"));
    EXPECT_EQ(At<Text>(rider.root, "log")->GetValue(), QStringLiteral("a secret of the tower"));
}

TEST_F(SharedRoad, BeginsAnewWhereTheItemCameBack) {
    const Rider rider = AddRider();
    Ride();
    m_number->SetValue(1);
    m_tree.Delete(Item("/S"));
    Settle();
    EXPECT_EQ(m_tree.FindItem(rider.root), nullptr);
    EXPECT_TRUE(rider.tic->IsAbsent());
    auto* const number = Add<Number>("/S", "number");
    Ride();
    const std::size_t before = CountPublished();
    number->SetValue(9);
    Settle();
    EXPECT_EQ(CountPublished(), before + 1);
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(SharedRoad, ShowsWhatIsAddedAndRemoved) {
    const Rider rider = AddRider();
    Ride();
    for (int i = 0; i < 100; ++i)
        Add<Number>("/S", QByteArray::number(i).constData())->SetValue(i);
    Settle();
    EXPECT_TRUE(IsEqual(rider));
    for (int i = 0; i < 100; i += 2)
        m_tree.Delete(m_tree.FindItem(QStringLiteral("/S/%1").arg(i)));
    Settle();
    EXPECT_TRUE(IsEqual(rider));
}

// What is large is taken in over several turns, and attached when all of it is here.
TEST_F(SharedRoad, ShowsALargeSubtreeWhole) {
    const Rider rider = AddRider();
    Ride();
    std::unique_ptr<values::TreeItem> large = std::make_unique<values::Node>(QStringLiteral("large"));
    for (int i = 0; i < 20000; ++i)
        static_cast<values::Node&>(*large).CreateChild(Number(i), QString::number(i));
    m_tree.AddItem(QStringLiteral("/S"), large);
    m_clock.SetCost(100us);
    for (int i = 0; i < 200; ++i) {
        m_clock.Pass(1100ms);
        Step();
        const auto* const shown =
            dynamic_cast<values::Node*>(m_tree.FindItem(rider.root + QStringLiteral("/large")));
        ASSERT_TRUE(shown == nullptr || shown->CountChildren() == 20000) << i;
    }
    m_clock.SetCost(0us);
    Settle();
    EXPECT_TRUE(IsEqual(rider));
}

// In its place among the answers ---------------------------------------------------------------------------

// One client writes, and the server sets another content at once. Whichever way is the quicker one, the last
// content is the server's.
class SharedRoadOrder : public SharedRoad, public testing::WithParamInterface<bool> {};

TEST_P(SharedRoadOrder, ShowsWhatTheServerSetAfterAWrite) {
    const bool isRoadFirst = GetParam();
    const Rider rider = AddRider();
    const Rider other = AddRider();
    Ride();
    At<Number>(rider.root, "number")->SetValue(5);
    rider.end->isReading = !isRoadFirst;
    rider.bus->isReading = isRoadFirst;
    Settle();
    ASSERT_EQ(m_number->GetValue(), 5);
    m_number->SetValue(6);
    Settle();
    rider.end->isReading = rider.bus->isReading = true;
    Settle();
    EXPECT_EQ(At<Number>(rider.root, "number")->GetValue(), 6);
    EXPECT_TRUE(IsEqual(rider));
    EXPECT_TRUE(IsEqual(other));
}

TEST_P(SharedRoadOrder, ShowsOnesOwnContentWhereItCameLast) {
    const bool isRoadFirst = GetParam();
    const Rider rider = AddRider();
    Ride();
    rider.end->isReading = !isRoadFirst;
    rider.bus->isReading = isRoadFirst;
    m_number->SetValue(4);
    Settle();
    At<Number>(rider.root, "number")->SetValue(5);
    Settle();
    rider.end->isReading = rider.bus->isReading = true;
    Settle();
    EXPECT_EQ(m_number->GetValue(), 5);
    EXPECT_EQ(At<Number>(rider.root, "number")->GetValue(), 5);
}

TEST_P(SharedRoadOrder, AnswersACreationOnceItsItemIsThere) {
    const bool isRoadFirst = GetParam();
    const Rider rider = AddRider();
    Ride();
    rider.end->isReading = !isRoadFirst;
    rider.bus->isReading = isRoadFirst;
    m_tree.ProvideNode(rider.root + QStringLiteral("/made"));
    Settle();
    rider.end->isReading = rider.bus->isReading = true;
    Settle();
    EXPECT_NE(Item("/S/made"), nullptr);
    EXPECT_FALSE(rider.end->client->HasUnansweredWrites());
    EXPECT_TRUE(IsEqual(rider));
}

TEST_P(SharedRoadOrder, TellsTheLastWordsOfAnItemBeforeItsEnd) {
    const bool isRoadFirst = GetParam();
    const Rider rider = AddRider();
    Ride();
    Occurrences occurrences;
    occurrences.Hear(At<Text>(rider.root, "log"));
    rider.end->isReading = !isRoadFirst;
    rider.bus->isReading = isRoadFirst;
    occurrences.Send(m_log, 1);
    Settle();
    occurrences.Send(m_log, 1);
    Settle();
    m_tree.Delete(Item("/S"));
    Settle();
    rider.end->isReading = rider.bus->isReading = true;
    Settle();
    EXPECT_EQ(occurrences.CountHeard(), 2U);
    EXPECT_EQ(m_tree.FindItem(rider.root), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Either, SharedRoadOrder, testing::Bool(), [](const auto& row) {
    return row.param ? std::string("TheRoadFirst") : std::string("TheSessionFirst");
});

TEST_F(SharedRoad, DoesNotWaitForAnAnswerBeyondWhatCameBeforeTheWrite) {
    const Rider rider = AddRider();
    Ride();
    rider.bus->isReading = false;
    m_number->SetValue(3);
    Settle();
    rider.bus->isReading = true;
    Settle();
    rider.end->isReading = false;
    auto* const log = At<Text>(rider.root, "log");
    At<Number>(rider.root, "number")->SetValue(5);
    Settle();
    m_log->SetValue(QStringLiteral("later"));
    Settle();
    EXPECT_EQ(log->GetValue(), QString()) << "the server may have said that behind the answer";
    rider.end->isReading = true;
    Settle();
    EXPECT_EQ(log->GetValue(), QStringLiteral("later"));
}

// Keys -----------------------------------------------------------------------------------------------------

class Eavesdropper final : public vt::IRoads::IListener {
  public:
    void OnRoadMessage(const char* data, qint64 size, bool /*isFetched*/) override {
        heard.emplace_back(data, static_cast<int>(size));
    }
    void OnRoadInputDone() override {}
    void OnFetched() override {}

    std::vector<QByteArray> heard;
};

TEST_F(SharedRoad, IsClosedToWhoeverLostTheRight) {
    const Rider leaver = AddRider();
    const Rider rider = AddRider();
    Ride();
    // What the one that leaves was told.
    const QString road = m_bus.published.back().road;
    m_hub->EndSession(m_hub->GetPeers()[0].session, QStringLiteral("no right any more"));
    m_log->SetValue(QStringLiteral("private"));
    Settle();
    const QByteArray message = m_bus.published.back().message;
    const auto envelope = vt::RoadEnvelope::Of(message.constData(), message.size());
    ASSERT_TRUE(envelope);
    EXPECT_EQ(envelope->key, 2U) << "a key that it was never told";
    EXPECT_EQ(At<Text>(rider.root, "log")->GetValue(), QStringLiteral("private"));
    EXPECT_EQ(At<Text>(leaver.root, "log")->GetValue(), QString());
}

TEST_F(SharedRoad, WaitsForAKeyThatIsSlowerThanWhatItOpens) {
    const Rider rider = AddRider();
    Ride();
    rider.end->isReading = false;
    m_hub->ChangeRoadKeys();
    m_log->SetValue(QStringLiteral("one"));
    Settle();
    EXPECT_EQ(At<Text>(rider.root, "log")->GetValue(), QString());
    rider.end->isReading = true;
    Settle();
    EXPECT_EQ(At<Text>(rider.root, "log")->GetValue(), QStringLiteral("one"));
}

TEST_F(SharedRoad, OfAnotherStationIsNotOpened) {
    const Rider rider = AddRider();
    rider.bus->station = QStringLiteral("another");
    Ride();
    rider.end->isReading = false;
    m_number->SetValue(7);
    Settle();
    EXPECT_EQ(At<Number>(rider.root, "number")->GetValue(), 0) << "it comes in the session";
    rider.end->isReading = true;
    Settle();
    EXPECT_TRUE(IsEqual(rider));
}

// Sizes ----------------------------------------------------------------------------------------------------

TEST_F(SharedRoad, CarriesContentsThatFillAMessage) {
    const Rider rider = AddRider();
    Ride();
    m_log->SetValue(QString(900'000, QLatin1Char('x')));
    m_log->SetValue(QString(900'000, QLatin1Char('y')));
    Settle();
    EXPECT_TRUE(IsEqual(rider));
    for (const auto& one : m_bus.published)
        EXPECT_LE(one.message.size(), vt::MaxRoadMessage);
}

TEST_F(SharedRoad, CarriesMoreThanTheBusTakesAtOnce) {
    for (const int most : {64, 300, 70'000}) {
        const Rider rider = AddRider();
        Ride();
        m_serverBus.maxMessage = most;
        m_bus.published.clear();
        const int before = InSession(rider);
        m_log->SetValue(QString(most < 1000 ? 5'000 : 200'000, QLatin1Char('x')));
        m_number->SetValue(most);
        Settle();
        EXPECT_TRUE(IsEqual(rider)) << most;
        EXPECT_EQ(InSession(rider), before) << most;
        EXPECT_GT(m_bus.published.size(), 2U) << most;
        for (const auto& one : m_bus.published)
            EXPECT_LE(one.message.size(), most);
        At<Number>(rider.root, "number")->SetValue(-most);
        Settle();
        EXPECT_EQ(m_number->GetValue(), -most) << "an answer finds its place behind all pieces";
        EXPECT_FALSE(rider.end->client->HasUnansweredWrites());
    }
}

TEST_F(SharedRoad, IsAppliedInTurnsThatYield) {
    const Rider rider = AddRider();
    Ride();
    rider.end->isReading = false;
    At<Number>(rider.root, "number")->SetValue(5);
    Settle();
    for (int i = 0; i < 50; ++i) {
        m_log->SetValue(QString::number(i));
        Settle();
    }
    rider.end->isReading = true;
    m_clock.SetCost(1ms);
    rider.end->connector->clientEnd->Deliver();
    EXPECT_NE(At<Text>(rider.root, "log")->GetValue(), QStringLiteral("49")) << "others have their turn";
    m_clock.SetCost(0us);
    Settle();
    EXPECT_EQ(At<Text>(rider.root, "log")->GetValue(), QStringLiteral("49"));
}

}  // namespace
