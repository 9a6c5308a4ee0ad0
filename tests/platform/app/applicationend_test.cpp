// SPDX-License-Identifier: Apache-2.0
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QProcess>

TEST(ApplicationEnd, IsCalledOnceByTheApplicationObjectThatIsThereOrComesNext) {
    QProcess process;
    process.start(QStringLiteral(ENDER), QStringList());
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "1: before 2: itself another ");
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
}
