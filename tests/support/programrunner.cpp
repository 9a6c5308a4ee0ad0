// SPDX-License-Identifier: Apache-2.0
#include <tests/support/programrunner.h>

#include <apps/common/eventwait.h>

namespace {

constexpr std::chrono::seconds Deadline(20);  // far beyond what a busy machine takes

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
