// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <csignal>

/// Hamlib's own server over its dummy receiver, as a program that a test may kill and stall. Needs rigctld
/// and rigctl.
class RigDaemon {
  public:
    ~RigDaemon() {
        if (m_process.IsRunning()) m_process.Kill();
    }

    /// Starts it, on a free port of this machine or on the one that it had, and waits until it can be
    /// reached.
    void Start() {
        if (m_port == 0) m_port = FreePort();
        ASSERT_TRUE(
            m_process.Start(QStringLiteral("rigctld"),
                            {QStringLiteral("-m"), QStringLiteral("1"), QStringLiteral("-T"),
                             QStringLiteral("127.0.0.1"), QStringLiteral("-t"), QString::number(m_port)}));
        ASSERT_TRUE(WaitUntil([this] { return CanBeReached(); }));
    }
    void Kill() { m_process.Kill(); }
    void Stall() const { ::kill(static_cast<pid_t>(m_process.GetProcessId()), SIGSTOP); }
    void GoOn() const { ::kill(static_cast<pid_t>(m_process.GetProcessId()), SIGCONT); }

    QString Address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    /// What rigctl says to \a words, in lines.
    QStringList Ask(const QStringList& words) const {
        ChildProgram rigctl;
        const ProgramOutcome outcome = rigctl.Run(
            QStringLiteral("rigctl"),
            QStringList{QStringLiteral("-m"), QStringLiteral("2"), QStringLiteral("-r"), Address()} + words,
            std::chrono::seconds(20));
        return QString::fromUtf8(outcome.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

  private:
    static int FreePort() {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }
    bool CanBeReached() const {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(m_port));
        return socket.waitForConnected(1000);
    }

    ChildProgram m_process;
    int m_port = 0;
};
