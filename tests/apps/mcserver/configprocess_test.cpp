// SPDX-License-Identifier: Apache-2.0
// The program and its configuration file, which others use too.
#include <platform/config/store/cfglock.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ServerAndItsFile : public testing::Test {
  protected:
    QByteArray Bytes() const {
        QFile file(m_server.ConfigPath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QStringList Words() const {
        return {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--config"),
                m_server.ConfigPath()};
    }
    std::string Complaint(const char* text) const {
        return "mcserver: the configuration file '" + m_server.ConfigPath().toStdString() + "' " + text;
    }

    ServerProcess m_server;
};

TEST_F(ServerAndItsFile, ASecondServerIsRefusedUntilTheFirstIsGoneHoweverItWent) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    ServerProcess second;
    EXPECT_EQ(second.Run(Words()), 1);
    EXPECT_THAT(second.Errors().toStdString(), StartsWith(Complaint("is used by mcserver (process ")));
    EXPECT_EQ(second.Errors().count(QLatin1Char('\n')), 1);
    EXPECT_EQ(second.Output(), QString());
    m_server.Kill();
    ASSERT_NO_FATAL_FAILURE(m_server.Restart());
}

TEST_F(ServerAndItsFile, AFileThatCannotBeReadIsNotReplacedByDefaults) {
    ASSERT_TRUE(QDir().mkpath(m_server.ConfigPath()));
    EXPECT_EQ(m_server.Run(Words()), 1);
    EXPECT_THAT(m_server.Errors().toStdString(), HasSubstr(Complaint("cannot be used (it is not a file)\n")));
}

#ifdef Q_OS_UNIX  // where a test can end a server in an orderly way
TEST_F(ServerAndItsFile, AnEditOutlivesTheServerThatToldIt) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    m_server.WriteFile(QStringLiteral("mcserver.ini"),
                       Bytes().replace("[General]\n", "[General]\nForceConnect=true\n"));
    EXPECT_EQ(m_server.Terminate(), 0) << m_server.Errors().toStdString();
    EXPECT_THAT(m_server.Output().toStdString(),
                HasSubstr("the configuration file was edited: ForceConnect;"));
    EXPECT_THAT(Bytes().toStdString(), HasSubstr("\nForceConnect=true\n"));
}

TEST_F(ServerAndItsFile, WhatCannotBeSavedIsSaidAtTheEnd) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    CfgLock lock(m_server.ConfigPath() + QStringLiteral(".writer"));
    ASSERT_EQ(lock.Try(), CfgLock::EOutcome::Held);
    ASSERT_TRUE(QFile::remove(m_server.ConfigPath()));
    EXPECT_EQ(m_server.Terminate(), 1);
    const std::string errors = m_server.Errors().toStdString();
    EXPECT_THAT(errors, HasSubstr(Complaint("is locked by ")));
    EXPECT_THAT(errors, HasSubstr("; the last changes are lost: DefaultFrequencyForChannel, "));
    EXPECT_THAT(m_server.Output().toStdString(), HasSubstr("the configuration cannot be saved"));
}

TEST_F(ServerAndItsFile, WhereOnlyDefaultsCannotBeWrittenNothingIsLost) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    m_server.Kill();  // so that the file lacks what is written at the end
    const QByteArray before = Bytes();
    m_server.FillDisk();
    ASSERT_NO_FATAL_FAILURE(m_server.Restart());
    EXPECT_EQ(m_server.Terminate(), 0) << m_server.Errors().toStdString();
    EXPECT_EQ(Bytes(), before);
}

TEST_F(ServerAndItsFile, AFullDiskIsSaidAtTheEndWithTheKeysThatAreLost) {
    m_server.FillDisk();
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    EXPECT_EQ(m_server.Terminate(), 1);
    // What else the server knows are defaults, which it comes up with at the next start too.
    EXPECT_THAT(m_server.Errors().toStdString(),
                EndsWith(Complaint("cannot be written (File too large); the last changes are lost: "
                                   "DefaultFrequencyForChannel, DefaultScanAveragingTimeIndex, "
                                   "ResetAfterBoot\n")));
    EXPECT_FALSE(QFile::exists(m_server.ConfigPath()));
}
#endif

}  // namespace
