// SPDX-License-Identifier: Apache-2.0
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

}  // namespace
