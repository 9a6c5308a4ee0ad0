// SPDX-License-Identifier: Apache-2.0
// The server as a service: installed, started, told what to do, stopped and removed by the system's own
// service manager.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/waituntil.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>

#include <windows.h>

#include <string>

namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// A service of this test's own, which is gone with it whatever happens.
class ServiceTest : public testing::Test {
  protected:
    ServiceTest() : m_name(QStringLiteral("mcstest%1").arg(QCoreApplication::applicationPid())) {
        // Of a run that was killed, whose number this process has now.
        ServerProcess().Run({Text("--remove-service"), Text("--name"), m_name});
    }
    ~ServiceTest() override {
        Close();
        ServerProcess().Run({Text("--remove-service"), Text("--name"), m_name});
        CloseServiceHandle(m_manager);
    }

    int Install(const QStringList& options = {}) {
        const QStringList words{Text("--install-service"), Text("--name"),      m_name,
                                Text("--listen"),          Text("127.0.0.1:0"), Text("--config"),
                                m_program.ConfigPath()};
        return m_program.Run(words + options);
    }
    int Remove() {
        Close();
        return m_program.Run({Text("--remove-service"), Text("--name"), m_name});
    }
    SC_HANDLE Service() {
        if (m_service == nullptr)
            m_service = OpenServiceW(m_manager, m_name.toStdWString().c_str(), SERVICE_ALL_ACCESS);
        return m_service;
    }
    bool Start() { return StartServiceW(Service(), 0, nullptr) != 0; }
    bool Tell(DWORD control) {
        SERVICE_STATUS status = {};
        return ControlService(Service(), control, &status) != 0;
    }
    SERVICE_STATUS Status() {
        SERVICE_STATUS status = {};
        QueryServiceStatus(Service(), &status);
        return status;
    }
    bool Becomes(DWORD state) {
        QTimer look;  // nobody tells that the manager's view has changed
        look.start(20);
        return WaitUntil([&] { return Status().dwCurrentState == state; }, 30000);
    }
    void Close() {
        if (m_service != nullptr) CloseServiceHandle(m_service);
        m_service = nullptr;
    }
    /// What the manager knows of it: the command line, or the account.
    QString Known(wchar_t* QUERY_SERVICE_CONFIGW::*what) {
        std::string buffer(8192, '\0');
        auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGW*>(&buffer.front());
        DWORD needed = 0;
        if (!QueryServiceConfigW(Service(), config, static_cast<DWORD>(buffer.size()), &needed))
            return QString();
        return QString::fromWCharArray(config->*what);
    }

    const QString m_name;
    ServerProcess m_program;

  private:
    SC_HANDLE m_manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
    SC_HANDLE m_service = nullptr;
};

TEST_F(ServiceTest, StartsRunsStopsAndIsRemoved) {
    ASSERT_EQ(Install(), 0) << m_program.Errors().toStdString();
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Becomes(SERVICE_RUNNING)) << Status().dwCurrentState;
    EXPECT_EQ(Status().dwControlsAccepted & SERVICE_ACCEPT_STOP, DWORD{SERVICE_ACCEPT_STOP});
    ASSERT_TRUE(QFile::remove(m_program.ConfigPath()));  // which is written with the start
    ASSERT_TRUE(Tell(SERVICE_CONTROL_STOP));
    ASSERT_TRUE(Becomes(SERVICE_STOPPED)) << Status().dwCurrentState;
    EXPECT_EQ(Status().dwWin32ExitCode, DWORD{NO_ERROR});
    EXPECT_TRUE(QFileInfo::exists(m_program.ConfigPath())) << "saved before it says that it has stopped";
    EXPECT_EQ(Remove(), 0) << m_program.Errors().toStdString();
    EXPECT_EQ(Service(), nullptr);
}

TEST_F(ServiceTest, IsStoppedWhereItIsRemovedWhileItRuns) {
    ASSERT_EQ(Install(), 0);
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Becomes(SERVICE_RUNNING));
    EXPECT_EQ(Remove(), 0) << m_program.Errors().toStdString();
    EXPECT_TRUE(QFileInfo::exists(m_program.ConfigPath()));
}

TEST_F(ServiceTest, ReadsItsFilesAnewWhenItIsTold) {
    m_program.WriteFile(Text("access"), "allow operator read /\n");
    ASSERT_EQ(Install({Text("--access"), m_program.Path(Text("access"))}), 0);
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Becomes(SERVICE_RUNNING));
    m_program.WriteFile(Text("access"), "nonsense\n");
    EXPECT_TRUE(Tell(SERVICE_CONTROL_PARAMCHANGE));
    EXPECT_TRUE(Tell(SERVICE_CONTROL_INTERROGATE));
    EXPECT_EQ(Status().dwCurrentState, DWORD{SERVICE_RUNNING})
        << "what is wrong in the file keeps what was read";
}

TEST_F(ServiceTest, TellsItsExitCodeWhereItCannotStart) {
    ASSERT_EQ(Install({Text("--access"), m_program.Path(Text("there-is-none"))}), 0);
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Becomes(SERVICE_STOPPED));
    EXPECT_EQ(Status().dwWin32ExitCode, DWORD{ERROR_SERVICE_SPECIFIC_ERROR});
    EXPECT_EQ(Status().dwServiceSpecificExitCode, 1u);
}

TEST_F(ServiceTest, RunsInAnAccountOfItsOwnWithTheOptionsThatWereGiven) {
    ASSERT_EQ(Install({Text("--sessions"), Text("50")}), 0);
    EXPECT_EQ(Known(&QUERY_SERVICE_CONFIGW::lpServiceStartName), Text("NT SERVICE\\") + m_name);
    const QString command = Known(&QUERY_SERVICE_CONFIGW::lpBinaryPathName);
    EXPECT_TRUE(command.contains(Text(" --service --listen 127.0.0.1:0 "))) << command.toStdString();
    EXPECT_TRUE(command.endsWith(QStringLiteral(" --sessions 50 --name %1 --headless").arg(m_name)))
        << command.toStdString();
}

TEST_F(ServiceTest, IsInstalledOnceAndRemovedOnce) {
    ASSERT_EQ(Install(), 0);
    EXPECT_EQ(Install(), 1);
    EXPECT_EQ(m_program.Errors().trimmed(),
              QStringLiteral(
                  "mcserver: the service '%1' cannot be installed: there is one already; --remove-service "
                  "removes it")
                  .arg(m_name));
    EXPECT_EQ(Remove(), 0);
    EXPECT_EQ(Remove(), 1);
    EXPECT_EQ(m_program.Errors().trimmed(),
              QStringLiteral("mcserver: the service '%1' cannot be removed: there is none").arg(m_name));
}

TEST_F(ServiceTest, IsStartedByNobodyButTheManager) {
    EXPECT_EQ(m_program.Run({Text("--service"), Text("--name"), m_name}), 1);
    EXPECT_EQ(m_program.Errors().trimmed(), Text("mcserver: --service is for the service manager alone"));
}

}  // namespace
