// SPDX-License-Identifier: Apache-2.0
// What shows only as a process starts and ends.
#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

ProgramOutcome RunTraceWriter(const std::optional<QString>& variable) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("MCS_TRACE"));
    if (variable) environment.insert(QStringLiteral("MCS_TRACE"), *variable);
    ProgramOutcome outcome = ProgramRunner::Run(QStringLiteral(TRACEWRITER), {}, environment);
    EXPECT_EQ(outcome.code, 0);
    return outcome;
}

TEST(ErrorHandlerProcess, StartsWithAssertionsAndWarningsUnlessTheEnvironmentSaysOtherwise) {
    EXPECT_EQ(RunTraceWriter(std::nullopt).output, QByteArray("34"));
    EXPECT_EQ(RunTraceWriter(QString()).output, QByteArray("34"));
    EXPECT_EQ(RunTraceWriter(QStringLiteral("everything")).output, QByteArray("34"));
}

TEST(ErrorHandlerProcess, StartsWithTheFlagsOfTheEnvironment) {
    EXPECT_EQ(RunTraceWriter(QStringLiteral("0x62")).output, QByteArray("98"));
    EXPECT_EQ(RunTraceWriter(QStringLiteral("64")).output, QByteArray("64"));
    EXPECT_EQ(RunTraceWriter(QStringLiteral("0")).output, QByteArray("0"));
}

TEST(ErrorHandlerProcess, ReportsUntilTheLastStaticObjectIsGone) {
    EXPECT_EQ(RunTraceWriter(std::nullopt).errors.trimmed(), QByteArray("the last word"));
}

}  // namespace
