// SPDX-License-Identifier: Apache-2.0
#include <tests/support/programrunner.h>

#include <tests/support/waituntil.h>

namespace {

constexpr int Deadline = 20000;  // ms; far beyond what a busy machine takes

int CodeOf(const QProcess& process, bool hasEnded) {
    const bool isGood = hasEnded && process.error() != QProcess::FailedToStart &&
                        process.exitStatus() == QProcess::NormalExit;
    return isGood ? process.exitCode() : -1;
}

}  // namespace

ProgramOutcome ProgramRunner::Run(const QString& program, const QStringList& words,
                                  const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, words);
    const bool hasEnded = process.waitForFinished(Deadline);
    if (!hasEnded) process.kill();
    process.waitForFinished();
    return {CodeOf(process, hasEnded), process.readAllStandardOutput(), process.readAllStandardError()};
}

ProgramRunner::ProgramRunner() {
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
                     [this] { output += process.readAllStandardOutput(); });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process,
                     [this] { errors += process.readAllStandardError(); });
}

ProgramRunner::~ProgramRunner() {
    process.disconnect();
    Kill();
}

void ProgramRunner::StartProgram(const QString& program, const QStringList& words) {
    output.clear();
    errors.clear();
    process.setProcessEnvironment(environment);
    process.start(program, words);
}

void ProgramRunner::Kill() {
    process.kill();
    process.waitForFinished();
}

bool ProgramRunner::WaitUntil(const std::function<bool()>& condition) {
    return ::WaitUntil(condition, Deadline);
}

int ProgramRunner::WaitForEnd() {
    const bool hasEnded = WaitUntil([this] { return !IsRunning(); });
    if (!hasEnded) Kill();
    return CodeOf(process, hasEnded);
}

int ProgramRunner::Terminate() {
    process.terminate();
    return WaitForEnd();
}
