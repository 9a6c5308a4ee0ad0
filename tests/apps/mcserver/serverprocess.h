// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/support/printing.h>
#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

#include <functional>

/// The program itself, with a directory of its own for its files.
class ServerProcess : protected ProgramRunner {
  public:
    /// From now on it starts with its window.
    void UseWindow() { m_hasWindow = true; }
    /// From now on it is \a program, the server with something more in it.
    void UseProgram(const char* program) { m_program = QString::fromLocal8Bit(program); }
    /// From now on no file takes a byte from it, as if the disk were full; only where there is a shell.
    void FillDisk() { m_limit = QStringLiteral("ulimit -f 0"); }
    /// From now on it may have that many files and connections open; likewise.
    void LimitDescriptors(int count) { m_limit = QStringLiteral("ulimit -n %1").arg(count); }
    /// From now on what it says on its standard error output goes to a file of this name in its directory.
    void SendErrorsTo(const QString& name) { process.SendErrorsTo(Path(name)); }
    /// Starts it on a free port of this machine, and waits until it says on which.
    void Start(const QStringList& arguments = {});
    /// Starts it once more, on the port that it had.
    void Restart(const QStringList& arguments = {});
    using ProgramRunner::Kill;
    using ProgramRunner::Terminate;
    /// Runs it to its end. \return its exit code; -1 if it does not end.
    int Run(const QStringList& arguments);

    int Port() const { return m_port; }
    qint64 ProcessId() const { return process.GetProcessId(); }
    QString Output() const { return QString::fromUtf8(output); }
    QString Errors() const { return QString::fromUtf8(errors); }
    QString Directory() const { return m_directory.path(); }
    QString Path(const QString& name) const { return m_directory.filePath(name); }
    void WriteFile(const QString& name, const QByteArray& content) const;
    QString ConfigPath() const { return Path(QStringLiteral("mcserver.ini")); }

    /// Runs the event loop until \a condition holds. False if it does not within the deadline.
    static bool WaitFor(const std::function<bool()>& condition) { return WaitUntil(condition); }

  private:
    void StartAt(int port, const QStringList& arguments);
    void FindPort();

    QTemporaryDir m_directory;
    int m_port = 0;
    QString m_program = QStringLiteral(MCSERVER);
    bool m_hasWindow = false;
    QString m_limit;  ///< what the shell is told to set
};
