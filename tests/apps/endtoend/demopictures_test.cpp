// SPDX-License-Identifier: Apache-2.0
// The demonstration ends with all pictures, or says why not.
#include <apps/mcdemo/demopictures.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

class DemoPicturesTest : public testing::Test {
  protected:
    void Draw(const char* name) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    DemoPictures Take(const char* program, const QStringList& arguments) {
        return DemoPictures::Take(QString::fromLocal8Bit(program), arguments, QDir(folder.path()));
    }

    QTemporaryDir folder;
};

TEST_F(DemoPicturesTest, WhatAProgramSaysThatDrawsNoneIsTold) {
    Draw("console-Overview.png");
    const DemoPictures taken = Take(MCTREE, {QStringLiteral("no-command")});
    EXPECT_THAT(taken.names, testing::IsEmpty()) << "those of an earlier time are gone";
    EXPECT_THAT(taken.problem.toStdString(), testing::AllOf(testing::HasSubstr("does not show all its pages"),
                                                            testing::HasSubstr("no-command")));
}

TEST_F(DemoPicturesTest, AProgramThatEndsWellAndDrawsNothingIsNoSuccess) {
    const DemoPictures taken = Take(MCTREE, {QStringLiteral("--help")});
    EXPECT_FALSE(taken.problem.isEmpty());
}

}  // namespace
