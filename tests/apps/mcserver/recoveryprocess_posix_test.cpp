// SPDX-License-Identifier: Apache-2.0
// The program is killed after somebody entered something for the suppression, and started anew.
#include <platform/config/store/cfglock.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

using testing::HasSubstr;
using testing::Not;

const QByteArray OneModule =
    "[GTS]\n"
    "ModuleCount=1\n"
    "Module0\\Index=0\n"
    "Module0\\Name=ADAM-6051\n"
    "Module0\\Address=127.0.0.1\n"
    "Module0\\PollInterval=1000\n"
    "Module0\\Assignments\\AssignmentCount=12\n"
    "Module0\\Assignments\\DI_3=121500000\n";
constexpr char Entered[] = "DI_4=118100000";
constexpr char TakenOver[] =
    "the last end was not an orderly one: what was entered for the suppression until";

class AKilledServer : public testing::Test {
  protected:
    AKilledServer() {
        qputenv("MCS_MODBUS_PORT", "1");  // no module there
        qputenv("MCS_TEST_FREQUENCY", "118.1");
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_server.UseProgram(MCSERVER_WITH_OPERATOR);
        m_server.WriteFile(QStringLiteral("mcserver.ini"), OneModule);
    }
    ~AKilledServer() override {
        Allow(m_everything);
        for (const char* const name : {"MCS_MODBUS_PORT", "MCS_TEST_FREQUENCY", "QT_QPA_PLATFORM"})
            qunsetenv(name);
        if (!m_platform.isEmpty()) qputenv("QT_QPA_PLATFORM", m_platform);
    }

    /// Starts it, and somebody enters a frequency.
    void StartAndEnter() {
        m_server.UseWindow();
        ASSERT_NO_FATAL_FAILURE(m_server.Start());
        ASSERT_TRUE(ServerProcess::WaitFor([this] { return QFile::exists(Recovery()); })) << Log();
    }
    void EnterAndKill() {
        ASSERT_NO_FATAL_FAILURE(StartAndEnter());
        m_server.Kill();
        ASSERT_THAT(Bytes(m_server.ConfigPath()), Not(HasSubstr(Entered)));
    }
    /// Starts it once more, as it was, and nobody enters anything.
    void StartAnew() {
        qunsetenv("MCS_TEST_FREQUENCY");
        ASSERT_NO_FATAL_FAILURE(m_server.Restart());
    }

    QString Recovery() const { return m_server.ConfigPath() + QStringLiteral(".gts-recovery"); }
    QString Aside() const { return Recovery() + QStringLiteral(".aside-1"); }
    std::string Log() const { return m_server.Output().toStdString(); }
    bool WaitForLog(const char* text) const {
        return ServerProcess::WaitFor([&] { return m_server.Output().contains(QLatin1String(text)); });
    }
    static std::string Bytes(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll().toStdString();
    }
    static void SetBytes(const QString& name, const std::string& bytes) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(QByteArray::fromStdString(bytes)), qint64(bytes.size()));
    }
    /// What may be done with the directory of the test.
    void Allow(QFileDevice::Permissions permissions) const {
        EXPECT_TRUE(QFile::setPermissions(m_server.Directory(), permissions));
    }

    static constexpr QFileDevice::Permissions m_lookOnly =
        QFileDevice::ReadOwner | QFileDevice::ReadOther | QFileDevice::ExeOwner | QFileDevice::ExeOther;
    static constexpr QFileDevice::Permissions m_everything =
        m_lookOnly | QFileDevice::WriteOwner | QFileDevice::WriteOther;

    const QByteArray m_platform = qgetenv("QT_QPA_PLATFORM");
    ServerProcess m_server;
};

TEST_F(AKilledServer, HasWhatWasEnteredWhenItIsStartedAnew) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    EXPECT_EQ(QFile::permissions(Recovery()) &
                  (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteOther),
              QFileDevice::Permissions());
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_TRUE(WaitForLog(TakenOver)) << Log();
    EXPECT_EQ(m_server.Terminate(), 0) << m_server.Errors().toStdString();
    EXPECT_THAT(Bytes(m_server.ConfigPath()), HasSubstr(Entered));
    EXPECT_THAT(Bytes(m_server.ConfigPath()), HasSubstr("DI_3=121500000"));
    EXPECT_FALSE(QFile::exists(Recovery()));
}

TEST_F(AKilledServer, HasItStillAfterItWasKilledAgain) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    for (int i = 0; i < 2; ++i) {
        ASSERT_NO_FATAL_FAILURE(StartAnew());
        EXPECT_TRUE(WaitForLog(TakenOver)) << Log();
        m_server.Kill();
        EXPECT_TRUE(QFile::exists(Recovery()));
    }
}

class AKilledServerWithoutAWindow : public AKilledServer {};

TEST_F(AKilledServerWithoutAWindow, HasItToo) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    qunsetenv("MCS_TEST_FREQUENCY");
    ASSERT_NO_FATAL_FAILURE(m_server.Restart({QStringLiteral("--headless")}));
    EXPECT_TRUE(WaitForLog(TakenOver)) << Log();
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Bytes(m_server.ConfigPath()), HasSubstr(Entered));
    EXPECT_FALSE(QFile::exists(Recovery()));
}

TEST_F(AKilledServer, LeavesNothingWhenItEndsInAnOrderlyWay) {
    ASSERT_NO_FATAL_FAILURE(StartAndEnter());
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Bytes(m_server.ConfigPath()), HasSubstr(Entered));
    EXPECT_FALSE(QFile::exists(Recovery()));
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Log(), Not(HasSubstr("suppression")));
}

TEST_F(AKilledServer, KeepsItIfTheConfigurationCannotBeSavedAtTheEnd) {
    ASSERT_NO_FATAL_FAILURE(StartAndEnter());
    {
        CfgLock lock(m_server.ConfigPath() + QStringLiteral(".writer"));
        ASSERT_EQ(lock.Try(), CfgLock::EOutcome::Held);
        EXPECT_EQ(m_server.Terminate(), 1);
    }
    EXPECT_TRUE(QFile::exists(Recovery()));
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_TRUE(WaitForLog(TakenOver)) << Log();
}

TEST_F(AKilledServer, SaysNothingIfItHadSavedAlready) {
    ASSERT_NO_FATAL_FAILURE(StartAndEnter());
    const std::string recovery = Bytes(Recovery());
    EXPECT_EQ(m_server.Terminate(), 0);
    SetBytes(Recovery(), recovery);  // as if it was killed before it could remove the file
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Log(), Not(HasSubstr("suppression")));
    EXPECT_FALSE(QFile::exists(Recovery()));
    EXPECT_FALSE(QFile::exists(Aside()));
}

TEST_F(AKilledServer, TellsADamagedFileAndPutsItAside) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    const std::string half = Bytes(Recovery()).substr(0, Bytes(Recovery()).size() / 2);
    SetBytes(Recovery(), half);
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_TRUE(WaitForLog("is damaged (its sum is not that of what is in it); it is not used, and kept as"))
        << Log();
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Bytes(m_server.ConfigPath()), Not(HasSubstr(Entered)));
    EXPECT_FALSE(QFile::exists(Recovery()));
    EXPECT_EQ(Bytes(Aside()), half);
}

TEST_F(AKilledServer, TellsAFileThatIsOlderThanTheConfigurationAndPutsItAside) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    const std::string recovery = Bytes(Recovery());
    std::string edited = Bytes(m_server.ConfigPath());
    edited.replace(edited.find("121500000"), 9, "119000000");
    SetBytes(m_server.ConfigPath(), edited);
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_TRUE(
        WaitForLog("is older than the configuration, whose section GTS was changed since; it is not used"))
        << Log();
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_THAT(Bytes(m_server.ConfigPath()), HasSubstr("DI_3=119000000"));
    EXPECT_THAT(Bytes(m_server.ConfigPath()), Not(HasSubstr(Entered)));
    EXPECT_EQ(Bytes(Aside()), recovery);
}

TEST_F(AKilledServer, TellsAFileOfAnotherConfigurationAndPutsItAside) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    ServerProcess other;
    const QString moved = other.ConfigPath() + QStringLiteral(".gts-recovery");
    ASSERT_TRUE(QFile::copy(Recovery(), moved));
    ASSERT_TRUE(QFile::copy(m_server.ConfigPath(), other.ConfigPath()));
    ASSERT_NO_FATAL_FAILURE(other.Start());
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return other.Output().contains(
            QStringLiteral("is of another configuration (%1); it is not used, and kept as")
                .arg(m_server.ConfigPath()));
    })) << other.Output().toStdString();
    EXPECT_EQ(other.Terminate(), 0);
    EXPECT_TRUE(QFile::exists(moved + QStringLiteral(".aside-1")));
}

TEST_F(AKilledServer, SaysThatAFullDiskTakesNothing) {
    m_server.FillDisk();
    m_server.UseWindow();
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    EXPECT_TRUE(WaitForLog("what is entered for the suppression would be lost with a killed server: "))
        << Log();
    EXPECT_THAT(Log(), HasSubstr(".gts-recovery' cannot be written: File too large"));
    EXPECT_FALSE(QFile::exists(Recovery()));
    EXPECT_EQ(m_server.Terminate(), 1);
}

TEST_F(AKilledServer, SaysThatAFolderTakesNothing) {
    ASSERT_TRUE(QFile::setPermissions(m_server.ConfigPath(), m_lookOnly));
    Allow(m_lookOnly);
    m_server.UseProgram(MCSERVER_WITH_OPERATOR_AS_NOBODY);
    m_server.UseWindow();
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    EXPECT_TRUE(WaitForLog(".gts-recovery' cannot be written: Permission denied")) << Log();
    m_server.Kill();
}

TEST_F(AKilledServer, UsesAFileInAFolderThatTakesNothing) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    ASSERT_TRUE(QFile::setPermissions(Recovery(), m_everything));
    ASSERT_TRUE(QFile::setPermissions(m_server.ConfigPath(), m_everything));
    ASSERT_TRUE(QFile::remove(m_server.ConfigPath() + QStringLiteral(".server")));
    Allow(m_lookOnly);
    m_server.UseProgram(MCSERVER_WITH_OPERATOR_AS_NOBODY);
    ASSERT_NO_FATAL_FAILURE(StartAnew());
    EXPECT_TRUE(WaitForLog(TakenOver)) << Log();
    m_server.Kill();
    EXPECT_TRUE(QFile::exists(Recovery()));
}

TEST_F(AKilledServer, DoesNotWriteOverAFileThatCannotBePutAside) {
    ASSERT_NO_FATAL_FAILURE(EnterAndKill());
    SetBytes(Recovery(), "something else");
    ASSERT_TRUE(QFile::setPermissions(Recovery(), m_everything));
    ASSERT_TRUE(QFile::setPermissions(m_server.ConfigPath(), m_everything));
    ASSERT_TRUE(QFile::remove(m_server.ConfigPath() + QStringLiteral(".server")));
    Allow(m_lookOnly);
    m_server.UseProgram(MCSERVER_WITH_OPERATOR_AS_NOBODY);
    ASSERT_NO_FATAL_FAILURE(m_server.Restart());
    EXPECT_TRUE(WaitForLog(
        "Permission denied); it is not used, and what is entered from now on is not kept beside it"))
        << Log();
    EXPECT_THAT(Log(), HasSubstr("is damaged (it does not begin as such a file does; "));
    EXPECT_TRUE(WaitForLog("' is in the way")) << Log();
    m_server.Kill();
    EXPECT_EQ(Bytes(Recovery()), "something else");
}

}  // namespace
