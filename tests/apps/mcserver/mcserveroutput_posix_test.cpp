// SPDX-License-Identifier: Apache-2.0
// What becomes of the program when what it prints cannot be printed.
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <tests/support/programrunner.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

#include <sys/types.h>
#include <csignal>

namespace {

// Tells the number of the process, then becomes the program; its output is read up to where it listens.
constexpr const char* ReadUntilItListens =
    R"({ sh -c 'echo $$ >&2; exec "$0" "$@"' "$0" "$@"; echo "ended with $?" >&2; } | sed /^listening/q)";

class ServerOutput : public testing::Test, protected ProgramRunner {
  protected:
    ~ServerOutput() override {
        if (m_serverProcess > 0 && IsRunning()) Signal(SIGKILL);
    }
    void StartServer() {
        StartProgram(QStringLiteral("/bin/sh"),
                     {QStringLiteral("-c"), QString::fromUtf8(ReadUntilItListens), QStringLiteral(MCSERVER),
                      QStringLiteral("--headless"), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                      QStringLiteral("--config"), ConfigPath()});
        ASSERT_TRUE(WaitUntil([this] { return output.contains("listening on") && errors.contains('\n'); }))
            << errors.constData();
        m_serverProcess = errors.left(errors.indexOf('\n')).toInt();
        ASSERT_GT(m_serverProcess, 0);
    }
    QString ConfigPath() const { return m_directory.filePath(QStringLiteral("mcserver.ini")); }
    int Port() const { return output.mid(output.lastIndexOf(':') + 1).trimmed().toInt(); }
    void Signal(int signal) const { ::kill(static_cast<pid_t>(m_serverProcess), signal); }

    int m_serverProcess = 0;

  private:
    QTemporaryDir m_directory;
};

TEST_F(ServerOutput, SaysThatItsDisplayCannotBeReached) {
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":99999"));
    StartProgram(QStringLiteral(MCSERVER), {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                                            QStringLiteral("--config"), ConfigPath()});
    EXPECT_EQ(WaitForEnd(), 1);
    EXPECT_EQ(errors,
              QByteArray("mcserver: the display \":99999\" cannot be reached; --headless needs none\n"));
    EXPECT_EQ(output, QByteArray());
}

TEST_F(ServerOutput, AReaderThatGoesDoesNotTakeTheServerAlong) {
    ASSERT_NO_FATAL_FAILURE(StartServer());
    VtClientCenter& center = VtClientCenter::Instance();
    // Each of them makes the server print lines.
    for (int i = 0; i < 3; ++i) {
        IVtClient* const client = center.CreateVtClient("127.0.0.1", Port());
        ASSERT_NE(client, nullptr);
        ASSERT_TRUE(::WaitUntil([client] { return client->IsConnected(); }))
            << client->GetLastError().toStdString();
        center.DestroyVtClient(client);
    }
    Signal(SIGTERM);
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_EQ(errors, QByteArray::number(m_serverProcess) + "\nended with 0\n");
}

#ifdef Q_OS_LINUX
TEST_F(ServerOutput, ATokenThatCannotBePrintedIsAFailure) {
    StartProgram(QStringLiteral("/bin/sh"),
                 {QStringLiteral("-c"), QStringLiteral("\"$0\" --make-token alice operator > /dev/full"),
                  QStringLiteral(MCSERVER)});
    EXPECT_EQ(WaitForEnd(), 1);
    EXPECT_EQ(errors, QByteArray("mcserver: the output cannot be written: No space left on device\n"));
}
#endif

}  // namespace
