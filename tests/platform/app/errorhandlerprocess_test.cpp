// SPDX-License-Identifier: Apache-2.0
// What shows only as a process starts and ends.
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QProcess>

#include <optional>

namespace {

struct Outcome {
    QByteArray output;
    QByteArray traces;
};

Outcome RunTraceWriter(const std::optional<QString>& variable) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("MCS_TRACE"));
    if (variable) environment.insert(QStringLiteral("MCS_TRACE"), *variable);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TRACEWRITER), QStringList());
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    return {process.readAllStandardOutput(), process.readAllStandardError()};
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
    EXPECT_EQ(RunTraceWriter(std::nullopt).traces, QByteArray("the last word\n"));
}

}  // namespace
