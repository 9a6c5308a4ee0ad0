// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/keptstations.h>
#include <apps/mcconsole/recentservers.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>

#include <memory>

namespace {

using testing::ElementsAre;

RecentServers::Entry Entry(const char* server, const char* user = "", const char* caFile = "") {
    RecentServers::Entry entry;
    entry.server.Parse(QString::fromLatin1(server));
    entry.user = QString::fromLatin1(user);
    entry.caFile = QString::fromLatin1(caFile);
    return entry;
}

std::vector<std::string> Texts(const RecentServers& servers) {
    std::vector<std::string> texts;
    for (const RecentServers::Entry& entry : servers.GetEntries())
        texts.push_back(entry.server.ToText().toStdString());
    return texts;
}

class RecentServersTest : public testing::Test {
  protected:
    RecentServersTest() {
        CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
        root.reset(CfgCenter::Instance().OpenRoot());
    }
    ~RecentServersTest() override { CfgCenter::Instance().SetStorePath(QString()); }

    QTemporaryDir directory;
    std::unique_ptr<ICfg> root;
    RecentServers servers;
};

TEST_F(RecentServersTest, KeepHostsBeyondAscii) {
    servers.Add(Entry("t\xfcrm.example"));
    servers.Write(*root);
    RecentServers read;
    read.Read(*root);
    EXPECT_THAT(Texts(read), ElementsAre("t\xc3\xbcrm.example:7450"));
}

TEST_F(RecentServersTest, StartEmpty) {
    servers.Read(*root);
    EXPECT_TRUE(servers.GetEntries().empty());
}

TEST_F(RecentServersTest, HaveTheLastOneFirstAndOnce) {
    servers.Add(Entry("one"));
    servers.Add(Entry("two"));
    servers.Add(Entry("one", "alice"));
    EXPECT_THAT(Texts(servers), ElementsAre("one:7450", "two:7450"));
    EXPECT_EQ(servers.GetEntries()[0].user, QStringLiteral("alice"));
}

TEST_F(RecentServersTest, ForgetTheOldestBeyondTen) {
    for (int i = 0; i < 12; ++i)
        servers.Add(Entry(qPrintable(QStringLiteral("host%1").arg(i))));
    EXPECT_EQ(servers.GetEntries().size(), 10U);
    EXPECT_EQ(Texts(servers).front(), "host11:7450");
    EXPECT_EQ(Texts(servers).back(), "host2:7450");
}

TEST_F(RecentServersTest, ComeBackFromTheConfigurationInTheSameOrder) {
    servers.Add(Entry("two", "bob", "/ca.pem"));
    servers.Add(Entry("mcss://[::1]:9"));
    servers.Write(*root);
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("other.ini")));
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
    const std::unique_ptr<ICfg> anew(CfgCenter::Instance().OpenRoot());
    RecentServers read;
    read.Read(*anew);
    EXPECT_THAT(Texts(read), ElementsAre("mcss://[::1]:9", "two:7450"));
    EXPECT_EQ(read.GetEntries()[1].user, QStringLiteral("bob"));
    EXPECT_EQ(read.GetEntries()[1].caFile, QStringLiteral("/ca.pem"));
}

TEST_F(RecentServersTest, LeaveOutWhatCannotBeAServer) {
    const std::unique_ptr<ICfg> section(root->ProvideSection(QStringLiteral("RecentServers")));
    section->WriteString(QStringLiteral("Server0"), QStringLiteral("tower:99999"));
    section->WriteString(QStringLiteral("Server1"), QStringLiteral("tower"));
    section->WriteString(QStringLiteral("User1"), QString(5000, QLatin1Char('x')));
    servers.Read(*root);
    EXPECT_THAT(Texts(servers), ElementsAre("tower:7450"));
    EXPECT_EQ(servers.GetEntries()[0].user, QString());
}

TEST_F(RecentServersTest, RememberWhereNatsWasTheLastOneFirstAndOnceAndTenAtMost) {
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(servers.AddNats(QStringLiteral("hub%1").arg(i)));
    EXPECT_TRUE(servers.AddNats(QStringLiteral("natss://hub5:4333")));
    EXPECT_TRUE(servers.AddNats(QStringLiteral("hub5")));
    EXPECT_FALSE(servers.AddNats(QStringLiteral("hub5")));
    EXPECT_FALSE(servers.AddNats(QString()));
    servers.Write(*root);
    RecentServers read;
    read.Read(*root);
    ASSERT_EQ(read.GetNats().size(), 10);
    EXPECT_EQ(read.GetNats().mid(0, 3).join(QLatin1Char(' ')).toStdString(), "hub5 natss://hub5:4333 hub11");
}

TEST_F(RecentServersTest, LeaveOutWhereNatsCannotBe) {
    const std::unique_ptr<ICfg> section(root->ProvideSection(QStringLiteral("RecentServers")));
    section->WriteString(QStringLiteral("Nats0"), QStringLiteral("alice@hub"));
    section->WriteString(QStringLiteral("Nats1"), QStringLiteral("hub"));
    servers.Read(*root);
    EXPECT_EQ(servers.GetNats(), QStringList{QStringLiteral("hub")});
}

TEST_F(RecentServersTest, StationsThatWereOpenComeBackInTheOrderOfTheirTabs) {
    KeptStations kept;
    kept.entries = {Entry("tower", "alice", "/ca.pem"), Entry("nats://hub/mast"), Entry("mcss://hill")};
    kept.front = 1;
    kept.Write(*root);
    KeptStations read;
    read.Read(*root);
    ASSERT_EQ(read.entries.size(), 3U);
    EXPECT_EQ(read.entries[0].user, QStringLiteral("alice"));
    EXPECT_EQ(read.entries[0].caFile, QStringLiteral("/ca.pem"));
    EXPECT_EQ(read.entries[1].server.ToText(), QStringLiteral("nats://hub/mast"));
    EXPECT_TRUE(read.entries[2].server.isEncrypted);
    EXPECT_EQ(read.front, 1);
    kept.entries.resize(1);
    kept.front = 0;
    kept.Write(*root);
    read.Read(*root);
    EXPECT_EQ(read.entries.size(), 1U) << "those that were closed are gone";
}

TEST_F(RecentServersTest, StationsThatCannotBeAreLeftOut) {
    const std::unique_ptr<ICfg> section(root->ProvideSection(QStringLiteral("Stations")));
    section->WriteInt(QStringLiteral("Count"), 2'000'000'000);
    section->WriteInt(QStringLiteral("Front"), -7);
    section->WriteString(QStringLiteral("Server0"), QStringLiteral("tower:99999"));
    section->WriteString(QStringLiteral("Server1"), QStringLiteral("tower"));
    section->WriteString(QStringLiteral("User1"), QString(5000, QLatin1Char('x')));
    KeptStations read;
    read.Read(*root);
    ASSERT_EQ(read.entries.size(), 1U);
    EXPECT_EQ(read.entries[0].user, QString());
    EXPECT_EQ(read.front, 0);
}

}  // namespace
