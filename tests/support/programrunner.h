// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/support/printing.h>

#include <QtCore/QByteArray>
#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <functional>

/// Runs one program at a time while the event loop goes on, so that the test may be its peer.
class ProgramRunner {
  protected:
    void StartProgram(const QString& program, const QStringList& words) {
        output.clear();
        errors.clear();
        process.setProcessEnvironment(environment);
        process.start(program, words);
    }

    /// Runs the event loop until \a condition holds, which is looked at whenever the program says something
    /// or ends, or a deadline has passed. True if it holds.
    bool WaitUntil(const std::function<bool()>& condition) {
        QEventLoop loop;
        const auto look = [&] {
            output += process.readAllStandardOutput();
            errors += process.readAllStandardError();
            if (condition()) loop.quit();
        };
        QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, look);
        QObject::connect(&process, &QProcess::readyReadStandardError, &loop, look);
        QObject::connect(&process, &QProcess::stateChanged, &loop, look);
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        if (!condition()) loop.exec();
        return condition();
    }

    /// The exit code of the program; -1 if it was killed, was never there or does not end.
    int WaitForEnd() {
        const bool hasEnded = WaitUntil([this] { return process.state() == QProcess::NotRunning; });
        if (!hasEnded) process.kill();
        process.waitForFinished();
        const bool isGood = hasEnded && process.error() != QProcess::FailedToStart &&
                            process.exitStatus() == QProcess::NormalExit;
        return isGood ? process.exitCode() : -1;
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QProcess process;
    QByteArray output;
    QByteArray errors;
};
