// SPDX-License-Identifier: Apache-2.0
// What a client makes of the answers of JetStream, which may come in any order, or not at all.
#include <platform/nats/roads/natsroads.h>
#include <tests/platform/nats/memorybus.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

QByteArray MessageOf(quint64 number) {
    QByteArray message = QByteArray("\1\0\0\0\1\0\0\0\0\0\0\0", 12);
    return message + static_cast<char>(number) + QByteArray(16, '\0');
}

class Listener final : public vt::IRoads::IListener {
  public:
    void OnRoadMessage(const char* data, qint64 size, bool /*isFetched*/) override {
        found.push_back(vt::NumberOnRoad(data, size).value_or(0));
    }
    void OnRoadInputDone() override {}
    void OnFetched() override { ++ends; }

    std::vector<quint64> found;
    int ends = 0;
};

class Kept : public testing::Test {
  protected:
    Kept() {
        m_bus->Open(true);
        m_roads.Listen(QStringLiteral("a"), &m_listener);
        EXPECT_TRUE(m_roads.Fetch(&m_listener, 1, 4));
    }
    void Find(quint64 number) { Answer(number, {QString(), MessageOf(number)}); }
    void Miss(quint64 number) { Answer(number, {QStringLiteral("NATS answers with status 404"), {}}); }

    const std::shared_ptr<MemoryBus> m_bus = std::make_shared<MemoryBus>();
    nats::NatsRoads m_roads{m_bus, QStringLiteral("tower"), nats::NatsRoads::ERole::Client};
    Listener m_listener;

  private:
    void Answer(quint64 number, const nats::NatsAnswer& answer) {
        const QByteArray end = ".a." + QByteArray::number(number);
        for (const MemoryBus::Question& question : std::vector<MemoryBus::Question>(m_bus->questions))
            if (question.subject.endsWith(end)) question.handler(answer);
    }
};

TEST_F(Kept, AreOverWhenAllWereAnswered) {
    for (quint64 number = 1; number <= 3; ++number)
        Find(number);
    EXPECT_EQ(m_listener.ends, 0);
    Find(4);
    EXPECT_EQ(m_listener.ends, 1);
    EXPECT_THAT(m_listener.found, ElementsAre(1, 2, 3, 4));
}

// With a server of NATS that was killed questions are lost, so some of them are never answered.
TEST_F(Kept, TheFirstThatIsNotThereEndsIt) {
    Miss(2);
    EXPECT_EQ(m_listener.ends, 1) << "whatever becomes of the others";
    Miss(4);
    EXPECT_EQ(m_listener.ends, 1) << "once";
}

TEST_F(Kept, WhatIsFoundBesideOneThatIsNotThereIsGiven) {
    Miss(3);
    Find(1);
    Find(2);
    EXPECT_THAT(m_listener.found, ElementsAre(1, 2));
    EXPECT_EQ(m_listener.ends, 1);
}

TEST_F(Kept, WhoListensNoMoreIsToldNothing) {
    m_roads.Unlisten(&m_listener);
    Miss(1);
    Find(2);
    EXPECT_EQ(m_listener.ends, 0);
    EXPECT_THAT(m_listener.found, IsEmpty());
}

}  // namespace
