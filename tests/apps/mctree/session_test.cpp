// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

/// What all commands that ask for a path have in common.
class SessionTest : public CommandFixture, public testing::WithParamInterface<QStringList> {
  protected:
    void SetUp() override { Add(Server(), "a", new values::Value<int>(1)); }
};

TEST_P(SessionTest, WithoutAServerThereIsNoConnection) {
    client.lastError = QStringLiteral("Connection\nrefused");
    const Outcome outcome = Run(GetParam() + Words({"--no-retry"}));
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message, QStringLiteral("no connection to example:7450: Connection\\nrefused"));
    EXPECT_TRUE(output.isEmpty());
}

TEST_P(SessionTest, WithoutAReasonTheServerDidNotAnswer) {
    EXPECT_EQ(Run(GetParam() + Words({"--timeout", "20"})).message,
              QStringLiteral("no connection to example:7450: no answer in time"));
}

TEST_P(SessionTest, InterruptedBeforeTheConnection) {
    isInterrupted = true;
    const Outcome outcome = Run(GetParam());
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message, QStringLiteral("interrupted"));
}

const auto WithPaths =
    testing::Values(Words({"ls", "/a"}), Words({"get", "/a"}), Words({"set", "/a", "1"}),
                    Words({"watch", "/a", "--count", "1"}), Words({"hold", "/a"}), Words({"info"}));
const auto ByCommand = [](const auto& row) { return row.param.first().toStdString(); };

INSTANTIATE_TEST_SUITE_P(, SessionTest, WithPaths, ByCommand);

struct AddressRow {
    const char* name;
    const char* host;
    const char* text;
};

class SessionAddress : public testing::TestWithParam<AddressRow> {};

TEST_P(SessionAddress, IsToldAsItIsTyped) {
    FakeVtClient client(QString::fromLatin1(GetParam().host));
    EXPECT_EQ(Session(client).Address(), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(, SessionAddress,
                         testing::Values(AddressRow{"OfAName", "example", "example:7450"},
                                         AddressRow{"OfAnIpv6Address", "::1", "[::1]:7450"},
                                         AddressRow{"OfAStation", "one:4223,two/tower",
                                                    "nats://one:4223,two/tower"}),
                         [](const auto& row) { return std::string(row.param.name); });

/// Commands that are over when they have their answer.
class BriefTest : public CommandFixture, public testing::WithParamInterface<QStringList> {};

TEST_P(BriefTest, AnAttemptThatFailedIsToldAtOnce) {
    client.lastError = QStringLiteral("Connection refused");
    EXPECT_EQ(Run(GetParam() + Words({"--timeout", "3600000"})).code, EExitCode::NoConnection);
}

INSTANTIATE_TEST_SUITE_P(, BriefTest,
                         testing::Values(Words({"ls", "/a"}), Words({"get", "/a"}), Words({"set", "/a", "1"}),
                                         Words({"info"})),
                         ByCommand);

/// Commands that go on until they are interrupted.
class LastingTest : public CommandFixture, public testing::WithParamInterface<QStringList> {};

TEST_P(LastingTest, TellAtOnceThatThereIsNoServerAndWaitForIt) {
    Add(Server(), "a", new values::Value<int>(1));
    client.lastError = QStringLiteral("Connection refused");
    client.Soon([this] {
        client.lastError.clear();
        client.Connect();
    });
    onWrite = [this] { isOutputOpen = false; };
    const Outcome outcome = Run(GetParam());
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message,
              QStringLiteral("no connection to example:7450: Connection refused (trying on)"));
    EXPECT_FALSE(output.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(, LastingTest,
                         testing::Values(Words({"watch", "/a"}), Words({"hold", "/a"}),
                                         Words({"get", "/a", "--wait", "exists"})),
                         ByCommand);

class PathTest : public CommandFixture, public testing::WithParamInterface<QStringList> {};

TEST_P(PathTest, WhatTheServerLacksIsNotFound) {
    const Outcome outcome = RunConnected(GetParam() + Words({"--timeout", "20"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("not found: /a\\x07"));
    EXPECT_TRUE(output.isEmpty());
}

TEST_P(PathTest, WhatTheServerDoesNotShowIsRefusedWithItsReason) {
    client.ConnectSoon();
    client.Soon([] {
        values::Refusals::Instance().Report(nullptr, QStringLiteral("/a\a"), QStringLiteral("not for you"));
    });
    const Outcome outcome = Run(GetParam());
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/a\\x07: not for you"));
}

TEST_P(PathTest, APathThatTheReasonNamesIsNotNamedTwice) {
    client.ConnectSoon();
    client.Soon([] {
        values::Refusals::Instance().Report(nullptr, QStringLiteral("/a\a"),
                                            QStringLiteral("/a\a is for others"));
    });
    EXPECT_EQ(Run(GetParam()).message, QStringLiteral("/a\\x07 is for others"));
}

INSTANTIATE_TEST_SUITE_P(, PathTest,
                         testing::Values(Words({"ls", "/a\a"}), Words({"get", "/a\a"}),
                                         Words({"set", "/a\a", "1"}), Words({"hold", "/a\a"})),
                         ByCommand);

class ConnectionTest : public CommandFixture {};

TEST_F(ConnectionTest, OneThatIsLostBeforeAllIsHereIsWaitedForAgain) {
    client.Soon([this] {
        client.Connect();
        client.Disconnect();
        Add(Server(), "a", new values::Value<int>(1));
        client.ConnectSoon();
    });
    EXPECT_TRUE(Run(Words({"get", "/a"})).IsDone());
    EXPECT_EQ(output, QByteArray("1\n"));
}

TEST_F(ConnectionTest, WithoutRetryOneThatIsLostIsNotWaitedFor) {
    client.lastError = QStringLiteral("gone");
    client.Soon([this] {
        client.Connect();
        client.Disconnect();
    });
    EXPECT_EQ(Run(Words({"get", "/a", "--no-retry", "--timeout", "3600000"})).code, EExitCode::NoConnection);
}

TEST_F(ConnectionTest, EveryMirrorIsGivenBack) {
    Add(Server(), "a", new values::Value<int>(1));
    EXPECT_TRUE(RunConnected(Words({"get", "/a"})).IsDone());
    EXPECT_TRUE(client.Tics().empty());
}

}  // namespace
