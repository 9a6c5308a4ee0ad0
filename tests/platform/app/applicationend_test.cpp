// SPDX-License-Identifier: Apache-2.0
#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

TEST(ApplicationEnd, IsCalledOnceByTheApplicationObjectThatIsThereOrComesNext) {
    const ProgramOutcome outcome = ProgramRunner::Run(QStringLiteral(ENDER), {});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.output.toStdString(), "1: before 2: itself another ");
    EXPECT_EQ(outcome.errors.toStdString(), "");
}
