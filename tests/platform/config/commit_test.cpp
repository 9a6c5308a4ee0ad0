// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>

#include <tests/platform/config/configfixture.h>
#include <tests/platform/config/systemreasons.h>
#include <tests/support/programrunner.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

const QString Key = QStringLiteral("k");
const QString Other = QStringLiteral("other");

class Commit : public ConfigTest {};

TEST_F(Commit, NothingReachesTheFileBeforeIt) {
    Root()->WriteInt(Key, 1);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    EXPECT_TRUE(Names().isEmpty());
    EXPECT_TRUE(Root()->CommitKey(Key));
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini")));
}

TEST_F(Commit, TakesAllThatWasWritten) {
    const std::unique_ptr<ICfg> section(Root()->ProvideSection(QStringLiteral("S")));
    section->WriteInt(Key, 1);
    Root()->WriteInt(Other, 2);
    EXPECT_TRUE(section->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nother=2\n\n[S]\nk=1\n"));
}

TEST_F(Commit, LeavesAFileAloneThatHoldsAllAlready) {
    const QByteArray bytes = "; a comment\n[General]\nk=1\n";
    WriteFile(bytes);
    Root()->WriteInt(Key, 1);
    EXPECT_TRUE(Root()->CommitKey(Key));
    EXPECT_EQ(FileBytes(), bytes);
}

TEST_F(Commit, OfAnotherProcessIsTakenInByWhoOnlyLooks) {
    WriteFile("[General]\nk=1\nother=1\n");
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 2);  // not committed yet
    WriteFile("[General]\nk=1\nother=3\n");
    EXPECT_EQ(root->ReadInt(Other, 0), 1);
    CfgCenter::Instance().Refresh();
    EXPECT_EQ(root->ReadInt(Other, 0), 3);
    EXPECT_EQ(root->ReadInt(Key, 0), 2);
    WriteFile("no configuration");
    CfgCenter::Instance().Refresh();
    EXPECT_EQ(root->ReadInt(Other, 0), 3) << "what cannot be read is no news";
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=2\nother=3\n"));
}

TEST_F(Commit, TakesInWhatAnotherProcessCommitted) {
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 1);
    ASSERT_TRUE(root->CommitKey(Key));
    ASSERT_TRUE(WriteByAnotherProcess(Other, QStringLiteral("2")));
    ASSERT_TRUE(WriteByAnotherProcess(Key, QStringLiteral("3")));
    root->WriteInt(QStringLiteral("mine"), 4);
    ASSERT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(root->ReadInt(Other, 0), 2);
    EXPECT_EQ(root->ReadInt(Key, 0), 3);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=3\nmine=4\nother=2\n"));
}

TEST_F(Commit, TakesInAChangeOfTheSameSizeAndTime) {
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 1);
    root->WriteInt(Other, 1);
    ASSERT_TRUE(root->CommitKey(Key));
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime time = file.fileTime(QFileDevice::FileModificationTime);
    file.write("[General]\nk=1\nother=2\n");
    ASSERT_TRUE(file.flush());
    ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();  // or some systems let nobody replace it
    root->WriteInt(Key, 5);
    ASSERT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=5\nother=2\n"));
}

TEST_F(Commit, WinsOverWhatAnotherProcessCommittedUnderTheSameKey) {
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 1);
    ASSERT_TRUE(root->CommitKey(Key));
    root->WriteInt(Key, 1);  // the same again, and still what the file holds in the end
    ASSERT_TRUE(WriteByAnotherProcess(Key, QStringLiteral("3")));
    ASSERT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(ReadByAnotherProcess(Key), QStringLiteral("1"));
}

TEST_F(Commit, FailsWithOneTraceWhereNothingCanBeWrittenAndSucceedsOnceItCan) {
    WriteFile("in the way", QStringLiteral("parent"));
    const QString path = Path(QStringLiteral("parent/app.ini"));
    CfgCenter::Instance().SetStorePath(path);
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_TRUE(traces.Records().empty());
    root->WriteInt(Key, 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(root->CommitKey(Key));
    EXPECT_THAT(traces.Messages(),
                testing::ElementsAre(QStringLiteral("The configuration file '%1' cannot be written (%2); the "
                                                    "changes are kept in memory")
                                         .arg(path, systemreasons::NotADirectory())));
    EXPECT_EQ(root->ReadInt(Key, 0), 1);
    ASSERT_TRUE(QFile::remove(Path(QStringLiteral("parent"))));
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(traces.Records().size(), 1U);
    CfgCenter::Instance().SetStorePath(path);
    EXPECT_EQ(Root()->ReadInt(Key, 0), 1);
}

TEST_F(Commit, FailureIsTracedAgainAfterASuccess) {
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(QDir().mkpath(Path()));
        root->WriteInt(Key, i);
        EXPECT_FALSE(root->CommitKey(Key));
        ASSERT_TRUE(QDir(Path()).removeRecursively());
        EXPECT_TRUE(root->CommitKey(Key));
        ASSERT_TRUE(QFile::remove(Path()));
    }
    EXPECT_EQ(traces.Records().size(), 2U);
}

TEST_F(Commit, RefusesWhatWouldBeTooLargeAtTheNextStart) {
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(Key, 1);
    ASSERT_TRUE(root->CommitKey(Key));
    const TraceRecorder traces;
    root->WriteString(Other, QString(5 * 1024 * 1024, QLatin1Char('x')));
    EXPECT_FALSE(root->CommitKey(Other));
    EXPECT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
    root->WriteString(Other, QStringLiteral("small"));
    EXPECT_TRUE(root->CommitKey(Other));
}

TEST_F(Commit, FindsClearedAwayWhatAKilledProcessLeft) {
    WriteFile("half", QStringLiteral("app.ini.next"));
    WriteFile("somebody", QStringLiteral("app.ini.writer"));
    WriteFile("mine", QStringLiteral("app.ini.backup"));
    Root();
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini.backup")));
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.backup")), QByteArray("mine"));
}

TEST_F(Commit, TakesNothingFromWhatAKilledProcessLeft) {
    const std::unique_ptr<ICfg> root = Root();
    WriteFile("[General]\nghost=1\n", QStringLiteral("app.ini.next"));
    WriteFile("somebody", QStringLiteral("app.ini.writer"));
    root->WriteInt(Key, 1);
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini")));
}

TEST_F(Commit, HappensAtTheEndOfTheProcessForWhatNobodyCommitted) {
    const ProgramOutcome outcome = ProgramRunner::Run(
        QStringLiteral(CFGWRITER), {Path(), QStringLiteral("set-uncommitted"), Key, QStringLiteral("last")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=last\n"));
}

TEST_F(Commit, TheEndOfTheProcessIsOrderlyWhereNothingCanBeWritten) {
    ASSERT_TRUE(QDir().mkpath(Path()));
    const ProgramOutcome outcome = ProgramRunner::Run(
        QStringLiteral(CFGWRITER), {Path(), QStringLiteral("set-uncommitted"), Key, QStringLiteral("last")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.errors.toStdString(), testing::HasSubstr("cannot be written"));
}

}  // namespace
