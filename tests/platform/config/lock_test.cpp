// SPDX-License-Identifier: Apache-2.0
// What happens to those that wait while somebody else has the lock of the file.
#include <apps/common/childprogram.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/store/cfglock.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

const QString Key = QStringLiteral("k");
constexpr std::chrono::seconds Patience(30);

class Locked : public ConfigTest {
  protected:
    Locked() : m_lock(Path(QStringLiteral("app.ini.writer"))) {}
    ~Locked() override { CfgCenter::Instance().SetPatience(std::chrono::seconds(1)); }

    static qint64 MillisecondsOf(const std::function<void()>& action) {
        QElapsedTimer time;
        time.start();
        action();
        return time.elapsed();
    }

    CfgLock m_lock;
};

TEST_F(Locked, ACommitWaitsASecondAndThenKeepsTheChangesAndNamesTheHolder) {
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    root->WriteInt(Key, 1);
    const qint64 waited = MillisecondsOf([&] { EXPECT_FALSE(root->CommitKey(Key)); });
    EXPECT_GE(waited, 900);
    EXPECT_LT(waited, 3000);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_THAT(traces.Messages()[0].toStdString(),
                MatchesRegex("The configuration file '.*app\\.ini' is locked by mcstest \\(process " +
                             std::to_string(QCoreApplication::applicationPid()) +
                             " on .*\\) since 2.*Z; the changes are kept in memory"));
    EXPECT_FALSE(QFileInfo::exists(Path()));
    m_lock.Release();
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
    EXPECT_THAT(Names(), ElementsAre(QStringLiteral("app.ini")));
}

// The end of a window stores its place and what it shows, and ends with the program, which commits the rest.
TEST_F(Locked, OneThatWasWaitedForInVainIsNotWaitedForAgain) {
    const std::unique_ptr<ICfg> root = Root();
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    const TraceRecorder traces;
    const qint64 waited = MillisecondsOf([&] {
        for (int i = 0; i < 20; ++i) {
            root->WriteInt(Key, i);
            EXPECT_FALSE(root->CommitKey(Key));
        }
    });
    EXPECT_LT(waited, 3000);
    EXPECT_EQ(traces.Records().size(), 1U);
    m_lock.Release();
    EXPECT_TRUE(root->CommitKey(Key));
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    root->WriteInt(Key, 30);
    EXPECT_GE(MillisecondsOf([&] { EXPECT_FALSE(root->CommitKey(Key)); }), 900);
}

TEST_F(Locked, ReadingDoesNotWait) {
    WriteFile("k=5\n");
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(Reopened()->ReadInt(Key, 0), 5); }), 500);
}

TEST_F(Locked, TheProgramIsToldAtItsEndWhyChangesAreLost) {
    CfgCenter::Instance().SetPatience(std::chrono::milliseconds(1));
    EXPECT_EQ(CfgCenter::Instance().Finish(), QString());
    Root()->WriteInt(Key, 1);
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    const QString problem = CfgCenter::Instance().Finish();
    EXPECT_THAT(problem.toStdString(), HasSubstr("the configuration file '" + Path().toStdString() +
                                                 "' is locked by mcstest (process "));
    EXPECT_THAT(problem.toStdString(), HasSubstr("; the last changes are lost: k"));
    m_lock.Release();
    EXPECT_EQ(CfgCenter::Instance().Finish(), QString());
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=1\n"));
}

TEST_F(Locked, TheHolderIsAnybodyIfThatCannotBeRead) {
    EXPECT_EQ(m_lock.GetHolder(), QStringLiteral("another process"));
    WriteFile(
        "a\x01"
        "b\nc",
        QStringLiteral("app.ini.writer"));
    EXPECT_EQ(m_lock.GetHolder(), QStringLiteral("a?b"));
    WriteFile(QByteArray(5000, 'x'), QStringLiteral("app.ini.writer"));
    EXPECT_EQ(m_lock.GetHolder().size(), 1024);
}

TEST_F(Locked, AKilledProcessHoldsNothing) {
    ChildProgram process;
    ASSERT_TRUE(process.Start(QStringLiteral(CFGWRITER), {Path(), QStringLiteral("lock")}));
    ASSERT_FALSE(process.WaitForLine(QString(), Patience).isNull());
    EXPECT_EQ(m_lock.Try(), CfgLock::EOutcome::Taken);
    EXPECT_THAT(m_lock.GetHolder().toStdString(),
                HasSubstr("cfgwriter (process " + std::to_string(process.GetProcessId()) + " on "));
    process.Kill();
    EXPECT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    EXPECT_THAT(m_lock.GetHolder().toStdString(), HasSubstr("mcstest (process "));
}

}  // namespace
