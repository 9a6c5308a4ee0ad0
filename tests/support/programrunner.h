// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <tests/support/printing.h>

#include <QtCore/QProcessEnvironment>

#include <functional>

/// For a fixture that runs one program at a time while the event loop goes on, so that the test may be its
/// peer. Kills it if a test leaves it running.
class ProgramRunner {
  public:
    /// Runs \a program to its end, while nothing else happens in this process.
    static ProgramOutcome Run(
        const QString& program, const QStringList& words,
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

  protected:
    ProgramRunner() = default;
    ~ProgramRunner() = default;
    ProgramRunner(const ProgramRunner&) = delete;
    ProgramRunner& operator=(const ProgramRunner&) = delete;

    void StartProgram(const QString& program, const QStringList& words);
    /// Ends it as kill -9 does.
    void Kill() { process.Kill(); }

    /// Runs the event loop until \a condition holds or a deadline has passed. True if it holds.
    static bool WaitUntil(const std::function<bool()>& condition);
    bool IsRunning() const { return process.IsRunning(); }
    /// The exit code of the program; -1 if it was killed, was never there or does not end.
    int WaitForEnd();
    /// Asks it to end, and waits. \return as WaitForEnd.
    int Terminate();

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    ChildProgram process;
    const QByteArray& output = process.GetOutput();  ///< all that it has said since it was started
    const QByteArray& errors = process.GetErrors();
};
