// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/support/printing.h>
#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

/// The program itself.
class ModuleProcess : protected ProgramRunner {
  public:
    /// Starts it at free ports of this machine, and waits until it says at which.
    void Start(const QStringList& arguments = {});
    /// Starts it once more, at the port that it had.
    void Restart();
    using ProgramRunner::Kill;
    /// Asks it to end, and waits. \return its exit code; -1 if it does not end.
    int Terminate();
    /// Runs it to its end. \return as Terminate.
    int Run(const QStringList& arguments);
    /// The same for one that has been told to end.
    int End() { return WaitForEnd(); }

    /// Types \a line, and waits until the program has carried it out. \return what it said about it, and
    /// about its modules afterwards.
    QByteArray Say(const char* line);
    /// Types \a line.
    void Type(const char* line);
    bool WaitForOutput(const char* text);
    bool WaitForErrors(const char* text);
    /// Asks until it has \a count connections.
    bool WaitForConnections(int count);

    quint16 Port(int module = 0) const;
    QByteArray Output() const { return output; }
    QByteArray Errors() const { return errors; }

  private:
    /// Whether what it says from \a from on tells about all of its modules.
    bool HasShown(int from) const;

    QStringList m_arguments;
    quint16 m_port = 0;
};
