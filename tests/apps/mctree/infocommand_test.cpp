// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

class InfoCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        client.application = QStringLiteral("mcserver\x07");
        client.latency = std::chrono::microseconds(1234);
        Add(AddNode(Server(), "a"), "b", new values::Value<int>(1));
        Add(Server(), "c", new values::Value<int>(1));
    }
};

TEST_F(InfoCommandTest, TellsWhatIsKnown) {
    EXPECT_TRUE(RunConnected(Words({"info"})).IsDone());
    EXPECT_EQ(Lines(),
              Words({"server        mcserver\\x07", "address       example:7450", "encryption    none",
                     "protocol      version 1", "latency       1.234 ms", "values        2"}));
}

TEST_F(InfoCommandTest, TellsThatTlsIsUsed) {
    client.isEncrypted = true;
    EXPECT_TRUE(RunConnected(Words({"info"})).IsDone());
    EXPECT_TRUE(Lines().contains(QStringLiteral("encryption    TLS")));
}

TEST_F(InfoCommandTest, WhatIsNotKnownIsNoFailure) {
    client.latency.reset();
    client.application.clear();
    EXPECT_TRUE(RunConnected(Words({"info", "--timeout", "20"})).IsDone());
    EXPECT_TRUE(Lines().contains(QStringLiteral("server        not known")));
    EXPECT_TRUE(Lines().contains(QStringLiteral("latency       not known")));
}

TEST_F(InfoCommandTest, ARootThatMayNotBeReadIsNotCounted) {
    client.ConnectSoon();
    client.isRootHidden = true;
    client.Soon([] {
        values::Refusals::Instance().Report(nullptr, QStringLiteral("/"), QStringLiteral("not for you"));
    });
    EXPECT_TRUE(Run(Words({"info"})).IsDone());
    EXPECT_TRUE(Lines().contains(QStringLiteral("values        not known (/: not for you)")))
        << output.constData();
}

TEST_F(InfoCommandTest, AsJson) {
    EXPECT_TRUE(RunConnected(Words({"info", "--json"})).IsDone());
    EXPECT_EQ(output,
              QByteArray("{\"address\":\"example\",\"latencyMicroseconds\":1234,\"port\":7450,"
                         "\"protocol\":1,\"server\":\"mcserver\\u0007\",\"tls\":false,\"values\":2}\n"));
}

}  // namespace
