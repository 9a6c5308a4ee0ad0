// SPDX-License-Identifier: Apache-2.0
#include <tests/support/programrunner.h>

#include <apps/common/eventwait.h>

namespace {

// Far beyond what a busy machine takes, also by Wine.
#ifdef Q_OS_WIN
constexpr std::chrono::seconds Deadline(120);
#else
constexpr std::chrono::seconds Deadline(60);
#endif

}  // namespace

ProgramOutcome ProgramRunner::Run(const QString& program, const QStringList& words,
                                  const QProcessEnvironment& environment) {
    ChildProgram process;
    process.SetEnvironment(environment);
    return process.Run(program, words, Deadline);
}

void ProgramRunner::StartProgram(const QString& program, const QStringList& words) {
    process.SetEnvironment(environment);
    process.Start(program, words);
}

bool ProgramRunner::WaitUntil(const std::function<bool()>& condition) {
    return eventwait::Until(condition, Deadline);
}

int ProgramRunner::WaitForEnd() {
    return process.WaitForEnd(Deadline);
}

int ProgramRunner::Terminate() {
    return process.Terminate(Deadline);
}
