// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>

#include <tests/platform/config/configfixture.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace {

const QString Key = QStringLiteral("k");

class Center : public ConfigTest {
  protected:
    Center() : m_directoryBefore(qgetenv("XDG_CONFIG_HOME")) {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(Path(QStringLiteral("home"))));
    }
    ~Center() override {
        CfgCenter::SetAppName(QString());
        if (m_directoryBefore.isNull())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", m_directoryBefore);
    }

  private:
    QByteArray m_directoryBefore;
};

TEST_F(Center, TheApplicationsNameIsUsedUnlessAnotherIsSet) {
    EXPECT_EQ(CfgCenter::GetAppName(), QCoreApplication::applicationName());
    EXPECT_EQ(CfgCenter::GetAppName(), QStringLiteral("mcstest"));
    CfgCenter::SetAppName(QStringLiteral("Receiver 1"));
    EXPECT_EQ(CfgCenter::GetAppName(), QStringLiteral("Receiver 1"));
    CfgCenter::SetAppName(QString());
    EXPECT_EQ(CfgCenter::GetAppName(), QStringLiteral("mcstest"));
}

TEST_F(Center, TheStoreIsInTheUsersConfigurationDirectoryUnlessSet) {
    CfgCenter& center = CfgCenter::Instance();
    EXPECT_EQ(center.GetStorePath(), Path());
    center.SetStorePath(QString());
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    EXPECT_EQ(center.GetStorePath(), directory + QStringLiteral("/MultiChannelServer/mcstest.ini"));
    CfgCenter::SetAppName(QStringLiteral("other"));
    EXPECT_EQ(center.GetStorePath(), directory + QStringLiteral("/MultiChannelServer/other.ini"));
}

TEST_F(Center, AnotherApplicationNameIsAnotherStore) {
    CfgCenter::Instance().SetStorePath(QString());
    CfgCenter::SetAppName(QStringLiteral("mcstest one"));
    const QString file = CfgCenter::Instance().GetStorePath();
    QFile::remove(file);  // where the folder is the user's all the same
    const std::unique_ptr<ICfg> one = Root();
    one->WriteInt(Key, 1);
    CfgCenter::SetAppName(QStringLiteral("mcstest two"));
    EXPECT_EQ(Root()->ReadInt(Key, 0), 0);
    ASSERT_TRUE(one->CommitKey(Key));
    CfgCenter::Instance().SetStorePath(file);
    EXPECT_EQ(Root()->ReadInt(Key, 0), 1);
    EXPECT_TRUE(QFile::remove(file));
}

TEST_F(Center, TwoRootsAreOfOneStore) {
    const std::unique_ptr<ICfg> one = Root();
    const std::unique_ptr<ICfg> other = Root();
    one->WriteInt(Key, 1);
    EXPECT_EQ(other->ReadInt(Key, 0), 1);
    std::unique_ptr<ICfg>(one->ProvideSection(QStringLiteral("S")));
    EXPECT_NE(std::unique_ptr<ICfg>(other->OpenSection(QStringLiteral("S"))), nullptr);
}

TEST_F(Center, SectionsStayOnTheFileTheyCameFrom) {
    const std::unique_ptr<ICfg> first = Root();
    CfgCenter::Instance().SetStorePath(Path(QStringLiteral("other.ini")));
    EXPECT_EQ(CfgCenter::Instance().GetStorePath(), Path(QStringLiteral("other.ini")));
    const std::unique_ptr<ICfg> second = Root();
    first->WriteInt(Key, 1);
    second->WriteInt(Key, 2);
    EXPECT_EQ(first->ReadInt(Key, 0), 1);
    ASSERT_TRUE(first->CommitKey(Key));
    ASSERT_TRUE(second->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
    EXPECT_EQ(FileBytes(QStringLiteral("other.ini")), QByteArray("[General]\nk=2\n"));
    EXPECT_EQ(Reopened()->ReadInt(Key, 0), 1);
}

TEST_F(Center, ReadingMakesNoFile) {
    EXPECT_EQ(Root()->ReadInt(Key, 3), 3);
    EXPECT_TRUE(Root()->CommitKey(Key));
    Reopened();
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Center, TheLastOneCommitsWhatNobodyCommitted) {
    Root()->WriteInt(Key, 1);
    EXPECT_TRUE(FileBytes().isEmpty());
    CfgCenter::Instance().SetStorePath(QString());
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
}

}  // namespace
