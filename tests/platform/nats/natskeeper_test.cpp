// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natskeeper.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class Keeper : public testing::Test {
  protected:
    void Open(const QByteArray& configuration) {
        ASSERT_TRUE(m_server.Start(configuration));
        QString problem;
        m_bus = nats::MakeBus(m_server.Options(), &problem);
        m_bus->Open(true);
        ASSERT_TRUE(WaitUntil([this] { return m_bus->State() == nats::INatsBus::EState::Open; }));
        m_keeper = std::make_unique<nats::NatsKeeper>(m_bus, "tower");
    }
    /// Why it does not keep "road.>"; empty if it does.
    std::string Keep(const nats::NatsKeeper::Limits& limits = nats::NatsKeeper::Limits()) {
        std::optional<QString> told;
        m_keeper->Keep("road.>", limits, [&told](const QString& problem) { told = problem; });
        EXPECT_TRUE(WaitUntil([&told] { return told.has_value(); }));
        return told.value_or(QStringLiteral("nothing")).toStdString();
    }
    std::string Get(const QByteArray& subject) {
        std::optional<std::optional<QByteArray>> told;
        m_keeper->Get(subject, [&told](const std::optional<QByteArray>& data) { told = data; });
        EXPECT_TRUE(WaitUntil([&told] { return told.has_value(); }));
        return told.value_or(std::nullopt).value_or("nothing").toStdString();
    }

    NatsServer m_server;
    std::shared_ptr<nats::INatsBus> m_bus;
    std::unique_ptr<nats::NatsKeeper> m_keeper;
};

TEST_F(Keeper, GivesWhatWasPublishedUnderEachSubject) {
    Open("jetstream: enabled");
    EXPECT_EQ(Keep(), "");
    for (int i = 1; i <= 100; ++i)
        m_bus->Publish("road.a." + QByteArray::number(i), "message " + std::to_string(i));
    EXPECT_EQ(Get("road.a.1"), "message 1");
    EXPECT_EQ(Get("road.a.100"), "message 100");
    EXPECT_EQ(Get("road.a.101"), "nothing");
}

TEST_F(Keeper, KeepsItWhileNatsIsKilledAndComesBack) {
    Open("jetstream: enabled");
    EXPECT_EQ(Keep(), "");
    m_bus->Publish("road.a.1", "kept");
    EXPECT_EQ(Get("road.a.1"), "kept");
    m_server.Kill();
    EXPECT_TRUE(WaitUntil([this] { return m_bus->State() != nats::INatsBus::EState::Open; }));
    ASSERT_TRUE(m_server.Start("jetstream: enabled"));
    EXPECT_TRUE(WaitUntil([this] { return m_bus->State() == nats::INatsBus::EState::Open; }));
    EXPECT_EQ(Get("road.a.1"), "kept");
    EXPECT_EQ(Keep(), "") << "and it may be asked for again";
}

TEST_F(Keeper, TakesOtherLimits) {
    Open("jetstream: enabled");
    EXPECT_EQ(Keep(), "");
    nats::NatsKeeper::Limits limits;
    limits.bytes = 10'000;
    EXPECT_EQ(Keep(limits), "");
    for (int i = 1; i <= 100; ++i)
        m_bus->Publish("road.a." + QByteArray::number(i), std::string(1000, 'x'));
    EXPECT_EQ(Get("road.a.100"), std::string(1000, 'x'));
    EXPECT_EQ(Get("road.a.1"), "nothing") << "the oldest went";
}

TEST_F(Keeper, WithoutJetStreamTheReasonIsTold) {
    Open("");
    EXPECT_EQ(Keep(), "this NATS has no JetStream");
    EXPECT_EQ(Get("road.a.1"), "nothing");
}

}  // namespace
