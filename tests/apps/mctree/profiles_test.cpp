// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace mctree;

namespace {

class ProfilesTest : public testing::Test {
  protected:
    QString File(const char* name) const { return directory.filePath(QLatin1String(name)); }
    void Write(const char* name, const QByteArray& bytes) const {
        QFile file(File(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    Outcome Parse(const QStringList& words) {
        return ParseArguments(words, {QStringLiteral("of the environment"), File("profiles")}, &arguments);
    }

    QTemporaryDir directory;
    Arguments arguments;
};

TEST_F(ProfilesTest, AServerIsCalledByItsName) {
    Write("profiles",
          "# ours\n[van]\nconnect = van:1\n\n[tower]\nconnect = \"mcss://df7:99\"\r\nuser=anna\n"
          "ca = ca.pem\ntimeout = 250\n");
    ASSERT_EQ(Parse(Words({"info", "-s", "tower"})).message, QString());
    EXPECT_EQ(arguments.server.host, QStringLiteral("df7"));
    EXPECT_EQ(arguments.server.port, 99);
    EXPECT_TRUE(arguments.server.isEncrypted);
    EXPECT_EQ(arguments.client.user, QStringLiteral("anna"));
    EXPECT_EQ(arguments.client.caFile, File("ca.pem"));
    EXPECT_EQ(arguments.client.token, QStringLiteral("of the environment"));
    EXPECT_EQ(arguments.Timeout(), std::chrono::milliseconds(250));
}

TEST_F(ProfilesTest, WhatTheCommandLineSaysCountsMore) {
    Write("profiles", "[tower]\nconnect = df7:99\nuser = anna\n");
    ASSERT_TRUE(Parse(Words({"--user", "bert", "info", "--server=tower"})).IsDone());
    EXPECT_EQ(arguments.client.user, QStringLiteral("bert"));
    EXPECT_EQ(arguments.server.host, QStringLiteral("df7"));
}

TEST_F(ProfilesTest, TheDefaultCountsUnlessAServerIsNamed) {
    Write("profiles", "[default]\nconnect = df7\ntoken = secret\n");
    ASSERT_TRUE(Parse(Words({"info"})).IsDone());
    EXPECT_EQ(arguments.server.host, QStringLiteral("df7"));
    EXPECT_EQ(arguments.client.token, QStringLiteral("secret"));
    ASSERT_TRUE(Parse(Words({"info", "--connect", "df8"})).IsDone());
    EXPECT_EQ(arguments.server.host, QStringLiteral("df8"));
    EXPECT_EQ(arguments.client.token, QStringLiteral("of the environment"));
}

TEST_F(ProfilesTest, WithoutAFileNothingIsSaid) {
    ASSERT_TRUE(Parse(Words({"info"})).IsDone());
    EXPECT_EQ(arguments.server.host, QStringLiteral("127.0.0.1"));
}

TEST_F(ProfilesTest, TheTokenStandsInAFileBesideIt) {
    Write("profiles", "[tower]\ntoken-file = tower.token\n");
    Write("tower.token",
          " s\xc3\xa9"
          "cret \nwhat follows is for people\n");
    ASSERT_EQ(Parse(Words({"info", "-s", "tower"})).message, QString());
    EXPECT_EQ(arguments.client.token, QString::fromUtf8("s\xc3\xa9"
                                                        "cret"));
    Write("tower.token", "\n");
    EXPECT_EQ(Parse(Words({"info", "-s", "tower"})).message,
              QStringLiteral("%1:2: %2 holds no token in its first line")
                  .arg(File("profiles"), File("tower.token")));
}

TEST_F(ProfilesTest, ANameThatIsNotThereIsToldWithThoseThatAre) {
    Write("profiles", "[tower]\n[van]\n");
    EXPECT_EQ(Parse(Words({"info", "-s", "twoer"})).message,
              QStringLiteral("no server \"twoer\" in %1, which has tower, van").arg(File("profiles")));
}

struct WrongRow {
    const char* name;
    const char* bytes;
    const char* error;
};

class WrongProfilesTest : public ProfilesTest, public testing::WithParamInterface<WrongRow> {};

TEST_P(WrongProfilesTest, AreToldWithTheLine) {
    Write("profiles", GetParam().bytes);
    const Outcome outcome = Parse(Words({"info", "-s", "a"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message, File("profiles") + QLatin1String(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    , WrongProfilesTest,
    testing::Values(
        WrongRow{"NoEquals", "[a]\nconnect df7\n", ":2: no NAME = VALUE"},
        WrongRow{"NoSection", "connect = df7\n", ":1: a name of a server in brackets must come first"},
        WrongRow{"BracketOpen", "[a\n", ":1: no name in brackets"},
        WrongRow{"NoName", "[ ]\n", ":1: no name in brackets"},
        WrongRow{"Twice", "[a]\n[a]\n", ":2: [a] is there twice"},
        WrongRow{"UnknownName", "[a]\njson = true\n", ":2: \"json\" is not known here"},
        WrongRow{"NoSwitch", "[a]\ntls = maybe\n", ":2: tls is true or false"},
        WrongRow{"WrongValue", "[a]\n\nconnect = df7:x\n", ":3: \"x\" is no port from 1 to 65535"}),
    RowName());

}  // namespace
