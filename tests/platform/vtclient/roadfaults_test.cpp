// SPDX-License-Identifier: Apache-2.0
// Whatever a shared road loses, repeats or turns round, and whoever else publishes there: its followers see
// each change once and in order, or take a new snapshot and say so.
#include <tests/platform/vtclient/losswatch.h>
#include <tests/platform/vtclient/occurrences.h>
#include <tests/platform/vtclient/roadends.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

using values::Value;
using Number = Value<int>;
using Text = Value<QString>;

class RoadFaults : public RoadEnds {
  protected:
    RoadFaults() {
        m_number = Add<Number>("/S", "number");
        m_log = Add<Text>("/S", "log");
        m_log->SetDelivery(values::EDelivery::EveryChange);
    }
    /// A rider whose log is heard.
    Rider AddListener() {
        const Rider rider = AddRider();
        Ride();
        m_occurrences.Hear(At<Text>(rider.root, "log"));
        return rider;
    }
    void Say(int count) {
        for (int i = 0; i < count; ++i) {
            m_occurrences.Send(m_log, 1);
            Settle();
        }
    }
    static void LoseNext(const Rider& rider, int count) {
        rider.bus->fate = [left = count](const QByteArray&) mutable { return left-- > 0 ? 0 : 1; };
    }
    /// From now on the server keeps nothing of what it has said by roads. Before there is anybody.
    void LetTheServerForget() {
        m_settings.roadMemory = 0;
        m_hub.reset();
        StartServer();
    }
    QString Road() const { return m_bus.published.back().road; }
    static int CountSnapshots(const TraceRecorder& traces) {
        int count = 0;
        for (const QString& message : traces.Messages())
            count += message.contains(QStringLiteral("taking a new snapshot")) ? 1 : 0;
        return count;
    }

    Number* m_number = nullptr;
    Text* m_log = nullptr;
    Occurrences m_occurrences;
};

TEST_F(RoadFaults, WhatIsMissingIsFetched) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    TraceRecorder traces;
    const LossWatch watch(*rider.end->client);
    Say(2);
    LoseNext(rider, 3);
    Say(5);
    EXPECT_EQ(m_occurrences.CountHeard(), 2U) << "nothing is told before what is missing";
    PassSlowly(1s);
    EXPECT_TRUE(watch.losses.empty());
    EXPECT_EQ(m_occurrences.CountHeard(), 7U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_EQ(CountSnapshots(traces), 0);
    EXPECT_EQ(rider.bus->fetches, 1);
}

TEST_F(RoadFaults, WhatIsMissingIsFetchedHoweverManyKeysAgoItWasSaid) {
    constexpr int keys = 30;
    LetTheServerForget();
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    const LossWatch watch(*rider.end->client);
    LoseNext(rider, 1);
    Say(1);
    for (int i = 0; i < keys; ++i) {
        m_hub->ChangeRoadKeys();
        Say(1);
    }
    PassSlowly(1s);
    EXPECT_TRUE(watch.losses.empty());
    EXPECT_EQ(m_occurrences.CountHeard(), 1U + keys);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
}

TEST_F(RoadFaults, TheLastMessageIsMissedByTheMarkBehindIt) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    LoseNext(rider, 1);
    Say(1);
    PassSlowly(2s);
    EXPECT_EQ(m_occurrences.CountHeard(), 1U);
}

TEST_F(RoadFaults, WhatIsNotKeptYetIsFetchedAgain) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    const auto missing =
        *vt::NumberOnRoad(m_bus.published.back().message.constData(), m_bus.published.back().message.size()) +
        1;
    m_bus.notKept.insert(missing);
    LoseNext(rider, 1);
    Say(3);
    PassSlowly(250ms);
    m_bus.notKept.clear();
    PassSlowly(1s);
    EXPECT_EQ(m_occurrences.CountHeard(), 3U);
}

// The bus was lost for a moment, or there is nobody who keeps anything.
TEST_F(RoadFaults, WhatNobodyKeepsTheServerSaysOnceMore) {
    const Rider rider = AddListener();
    const Rider other = AddRider();
    Ride();
    TraceRecorder traces;
    Say(2);
    LoseNext(rider, 3);
    Say(5);
    PassSlowly(1s);
    EXPECT_EQ(m_occurrences.CountHeard(), 7U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_TRUE(traces.Messages().empty()) << "nobody takes what comes again for a stranger's";
    EXPECT_TRUE(IsEqual(rider));
    EXPECT_TRUE(IsEqual(other));
}

// A cluster in which nobody keeps anything carries the question, and nobody answers; so does one in which the
// question goes to a server that was killed a moment ago.
TEST_F(RoadFaults, WhereAKeeperSaysNothingTheServerIsAskedSoon) {
    m_bus.hasKeeper = m_bus.isKeeperSilent = true;
    const Rider rider = AddListener();
    LoseNext(rider, 3);
    Say(5);
    PassSlowly(500ms);
    EXPECT_EQ(m_occurrences.CountHeard(), 5U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_EQ(rider.bus->fetches, 1) << "and the keeper was asked first";
}

TEST_F(RoadFaults, WhatTheBusDidNotTakeTheServerSaysOnceMore) {
    const Rider rider = AddListener();
    TraceRecorder traces;
    m_bus.isFull = true;
    Say(3);
    m_bus.isFull = false;
    Say(1);
    PassSlowly(2s);
    EXPECT_EQ(m_occurrences.CountHeard(), 4U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_EQ(CountSnapshots(traces), 0);
}

TEST_F(RoadFaults, WhatIsMissedWhileNobodyCanBeAskedIsAskedForLater) {
    const Rider rider = AddListener();
    TraceRecorder traces;
    // Of what comes, the first five are lost; by the sixth that is known; what is said once more is lost,
    // too.
    rider.bus->fate = [count = 0](const QByteArray&) mutable {
        ++count;
        return count == 6 || count > 12 ? 1 : 0;
    };
    Say(6);
    PassSlowly(3s);
    EXPECT_EQ(m_occurrences.CountHeard(), 6U);
    EXPECT_EQ(CountSnapshots(traces), 0);
}

TEST_F(RoadFaults, WhatIsGoneMeansANewSnapshotAndIsToldAsLost) {
    LetTheServerForget();
    for (const bool hasKeeper : {false, true}) {
        m_bus.hasKeeper = hasKeeper;
        const Rider rider = AddListener();
        TraceRecorder traces;
        const LossWatch watch(*rider.end->client);
        for (quint64 number = 0; number < 1000; ++number)
            m_bus.notKept.insert(number);
        LoseNext(rider, 2);
        m_number->SetValue(m_number->GetValue() + 1);
        Say(4);
        PassSlowly(5s);
        ASSERT_EQ(CountSnapshots(traces), 1) << hasKeeper;
        ASSERT_EQ(watch.losses.size(), 1U) << hasKeeper;
        EXPECT_EQ(watch.losses[0].path, QStringLiteral("/S"));
        EXPECT_TRUE(watch.losses[0].wasConnected);
        EXPECT_LT(watch.losses[0].from, watch.losses[0].until) << "the time of the gap, not of the snapshot";
        EXPECT_THAT(traces.Messages()[0].toStdString(),
                    HasSubstr("The shared road of '/S' is given up: messages"));
        EXPECT_THAT(traces.Messages()[0].toStdString(), HasSubstr("is lost"));
        EXPECT_TRUE(IsEqual(rider));
        PassSlowly(3s);
        const int before = InSession(rider);
        rider.end->isReading = false;
        m_number->SetValue(m_number->GetValue() + 1);
        Settle();
        EXPECT_EQ(InSession(rider), before) << "the road is taken again";
        EXPECT_TRUE(IsEqual(rider));
        m_occurrences.Hear(nullptr);
        rider.end->isReading = true;
    }
}

TEST_F(RoadFaults, AWriteUnderWayIsAnsweredAcrossAGap) {
    const Rider rider = AddListener();
    LoseNext(rider, 1);
    rider.end->isReading = false;
    Say(1);
    At<Number>(rider.root, "number")->SetValue(5);
    Settle();
    rider.end->isReading = true;
    PassSlowly(5s);
    EXPECT_EQ(m_number->GetValue(), 5);
    EXPECT_FALSE(rider.end->client->HasUnansweredWrites());
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(RoadFaults, ASnapshotDoesNotReleaseWhatIsUsed) {
    LetTheServerForget();
    const Rider rider = AddListener();
    const auto released = m_access.released;
    LoseNext(rider, 1);
    Say(2);
    PassSlowly(5s);
    EXPECT_EQ(m_access.released, released);
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(RoadFaults, ARoadThatFallsSilentIsLeft) {
    const Rider rider = AddListener();
    rider.bus->fate = [](const QByteArray&) { return 0; };
    TraceRecorder traces;
    PassSlowly(20s);
    ASSERT_GE(traces.Messages().size(), 1U);
    EXPECT_THAT(traces.Messages()[0].toStdString(), HasSubstr("nothing came by it for"));
    m_number->SetValue(7);
    Settle();
    EXPECT_TRUE(IsEqual(rider)) << "in its session";
}

TEST_F(RoadFaults, ARoadThatKeepsFailingIsTriedMoreAndMoreRarely) {
    LetTheServerForget();
    const Rider rider = AddListener();
    rider.bus->fate = [count = 0](const QByteArray&) mutable { return ++count % 2; };
    TraceRecorder traces;
    for (int i = 0; i < 240; ++i) {
        m_number->SetValue(i);
        PassSlowly(250ms);
    }
    EXPECT_LE(CountSnapshots(traces), 8) << "in a minute";
    rider.bus->fate = [](const QByteArray&) { return 1; };
    PassSlowly(1s);
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(RoadFaults, APieceOfAMessageThatIsMissingIsFetched) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    TraceRecorder traces;
    m_serverBus.maxMessage = 200;
    rider.bus->fate = [count = 0](const QByteArray&) mutable { return ++count % 3 == 0 ? 0 : 1; };
    m_occurrences.Send(m_log, 1, 2000);
    m_occurrences.Send(m_log, 1, 3000);
    Settle();
    EXPECT_EQ(m_occurrences.CountHeard(), 0U) << "nothing is told of what is not complete";
    PassSlowly(3s);
    EXPECT_EQ(m_occurrences.CountHeard(), 2U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_EQ(CountSnapshots(traces), 0);
}

TEST_F(RoadFaults, APieceOfAMessageThatIsGoneMeansANewSnapshot) {
    LetTheServerForget();
    const Rider rider = AddListener();
    TraceRecorder traces;
    m_serverBus.maxMessage = 200;
    LoseNext(rider, 1);
    m_log->SetValue(QString(2000, QLatin1Char('x')));
    m_number->SetValue(4);
    PassSlowly(5s);
    EXPECT_EQ(CountSnapshots(traces), 1);
    EXPECT_TRUE(IsEqual(rider));
    m_log->SetValue(QString(2000, QLatin1Char('y')));
    PassSlowly(2s);
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(RoadFaults, ABusThatTakesNothingIsAGapForAll) {
    const Rider rider = AddListener();
    m_bus.isFull = true;
    m_number->SetValue(3);
    Settle();
    m_bus.isFull = false;
    m_number->SetValue(4);
    PassSlowly(5s);
    EXPECT_TRUE(IsEqual(rider));
}

TEST_F(RoadFaults, WhatIsTooFarAheadIsNotKeptForEver) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    LoseNext(rider, 1);
    const int length = 100'000;
    for (int i = 0; i < 200; ++i) {
        m_occurrences.Send(m_log, 1, length);
        Settle();
    }
    EXPECT_EQ(m_occurrences.CountHeard(), 0U);
    PassSlowly(5s);
    EXPECT_EQ(m_occurrences.CountHeard(), 200U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
}

// Strangers ------------------------------------------------------------------------------------------------

struct Stranger {
    const char* name;
    /// What it publishes, from a message of the server's.
    QByteArray (*make)(QByteArray);
};

const Stranger Strangers[] = {
    {"Nothing", [](QByteArray) { return QByteArray(); }},
    {"Rubbish", [](QByteArray) { return QByteArray("hello, is this the tower?"); }},
    {"MuchRubbish", [](QByteArray) { return QByteArray(3 << 20, '\1'); }},
    {"TheSameOnceMore", [](QByteArray message) { return message; }},
    {"AnotherNumber",
     [](QByteArray message) {
         message[12] = static_cast<char>(message[12] + 5);
         return message;
     }},
    {"AFarNumber",
     [](QByteArray message) {
         message[6] = 1;
         return message;
     }},
    {"AnotherKey",
     [](QByteArray message) {
         message[4] = 9;
         return message;
     }},
    {"AnotherContent",
     [](QByteArray message) {
         message[15] = static_cast<char>(message[15] ^ 1);
         return message;
     }},
    {"AnotherTag",
     [](QByteArray message) {
         message[message.size() - 1] = static_cast<char>(message[message.size() - 1] ^ 1);
         return message;
     }},
    {"ACutOne", [](QByteArray message) { return message.left(message.size() - 1); }},
};

class RoadStrangers : public RoadFaults, public testing::WithParamInterface<Stranger> {};

TEST_P(RoadStrangers, DoNoHarmAndAreToldOfOnce) {
    m_bus.hasKeeper = true;
    const Rider rider = AddListener();
    Say(2);
    TraceRecorder traces;
    const QByteArray message = m_bus.published.back().message;
    for (int i = 0; i < 100; ++i) {
        m_bus.Publish(Road(), GetParam().make(message));
        Settle();
    }
    PassSlowly(1s);
    Say(3);
    PassSlowly(8s);
    EXPECT_EQ(m_occurrences.CountHeard(), 5U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
    EXPECT_EQ(rider.bus->fetches, 0) << "nothing is missing";
    EXPECT_LE(traces.Messages().size(), 1U) << "one line";
    EXPECT_TRUE(IsEqual(rider));
}

// Before the server's own message is there, which alone has that number.
TEST_P(RoadStrangers, SayNothingInPlaceOfTheServer) {
    const Rider rider = AddListener();
    Say(2);
    LoseNext(rider, 1);
    Say(1);
    const QByteArray next = m_bus.published.back().message;
    const QByteArray said = GetParam().make(next);
    m_bus.Publish(Road(), said);
    Settle();
    EXPECT_EQ(m_occurrences.CountHeard(), said == next ? 3U : 2U);
    m_bus.Publish(Road(), next);
    Settle();
    EXPECT_EQ(m_occurrences.CountHeard(), 3U);
    EXPECT_TRUE(m_occurrences.AreInOrder(false));
}

INSTANTIATE_TEST_SUITE_P(All, RoadStrangers, testing::ValuesIn(Strangers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RoadFaults, AStrangerIsToldOf) {
    const Rider rider = AddListener();
    Say(1);
    TraceRecorder traces;
    m_bus.Publish(Road(), "rubbish");
    Settle();
    ASSERT_EQ(traces.Messages().size(), 1U);
    EXPECT_EQ(
        traces.Messages()[0],
        QStringLiteral("Somebody else publishes on the shared road of '/S': 1 messages were dropped that "
                       "were forged, damaged or repeated"));
}

}  // namespace
