// SPDX-License-Identifier: Apache-2.0
#include <apps/common/childprogram.h>

#include <tests/platform/config/configfixture.h>
#include <tests/platform/config/uniformtext.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>

#include <algorithm>

namespace {

constexpr std::chrono::seconds Patience(30);

class Processes : public ConfigTest {
  protected:
    void Start(ChildProgram* process, const QStringList& arguments) const {
        ASSERT_TRUE(process->Start(QStringLiteral(CFGWRITER), QStringList(Path()) + arguments));
    }
    static QString NextLine(ChildProgram* process) { return process->WaitForLine(QString(), Patience); }
    /// Both wait for each other before they begin, so that neither is done before the other is there.
    void RunAtOnce(const QStringList& first, const QStringList& second) const {
        ChildProgram processes[2];
        Start(&processes[0], first);
        Start(&processes[1], second);
        for (ChildProgram& process : processes)
            ASSERT_FALSE(NextLine(&process).isNull());
        for (ChildProgram& process : processes) {
            process.Say("go");
            ASSERT_TRUE(process.Flush(Patience));
        }
        for (ChildProgram& process : processes)
            EXPECT_EQ(process.WaitForEnd(Patience), 0) << process.GetErrors().toStdString();
    }
};

TEST_F(Processes, TwoThatWriteAtOnceKeepEachOthersKeys) {
    constexpr int Count = 50;
    const QString count = QString::number(Count);
    RunAtOnce({QStringLiteral("fill"), QStringLiteral("one"), count},
              {QStringLiteral("fill"), QStringLiteral("two"), count});
    const std::unique_ptr<ICfg> root = Reopened();
    for (int i = 0; i < Count; ++i) {
        EXPECT_EQ(root->ReadInt(QStringLiteral("one/key%1").arg(i), -1), i);
        EXPECT_EQ(root->ReadInt(QStringLiteral("two/key%1").arg(i), -1), i);
    }
    const QString shared = root->ReadString(QStringLiteral("shared"), QString());
    EXPECT_TRUE(shared == QLatin1String("one") || shared == QLatin1String("two")) << shared.toStdString();
    EXPECT_EQ(Names(), QStringList(QStringLiteral("app.ini")));
}

// The file keeps its size, and often its time too, which is coarser than the commits.
TEST_F(Processes, TwoThatWriteAtOnceNeverTakeBackWhatTheOtherCommitted) {
    RunAtOnce({QStringLiteral("count"), QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("100")},
              {QStringLiteral("count"), QStringLiteral("two"), QStringLiteral("one"), QStringLiteral("100")});
    EXPECT_EQ(FileBytes(), QByteArray("[General]\none=1099\ntwo=1099\n"));
}

/// A process is killed at moments that are the same in each run as far as its progress goes.
class KilledProcesses : public Processes {
  protected:
    const QString Temporary = QStringLiteral("temporary");

    /// Lets a process write until it has printed \a lines and some more time has passed, and kills it.
    void RunAndKill(int firstRound, int lines, qint64 spinNs) const {
        ChildProgram process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), Path(Temporary));
        process.SetEnvironment(environment);
        Start(&process, {QStringLiteral("churn"), QString::number(firstRound)});
        for (int i = 0; i < lines; ++i) {
            const QString line = NextLine(&process);
            ASSERT_FALSE(line.isNull()) << process.GetErrors().toStdString();
            const QStringList words = line.split(QLatin1Char(' '));
            if (words[0] == QLatin1String("opened")) {
                EXPECT_LT(words[1].toInt(), 4000);  // one that is held up gives up after 5000
            }
        }
        QElapsedTimer spin;
        spin.start();
        while (spin.nsecsElapsed() < spinNs) {
        }
        ASSERT_TRUE(process.IsRunning());
        process.Kill();
        EXPECT_EQ(process.GetErrors().toStdString(), "");
    }
    void ExpectWholeFile() const {
        const QByteArray bytes = FileBytes();
        ASSERT_TRUE(bytes.startsWith("[Long]\n") && bytes.endsWith('\n')) << bytes.size();
        const QList<QByteArray> lines = bytes.trimmed().split('\n');
        ASSERT_EQ(lines.size(), 1 + uniformtext::Keys);
        for (int i = 0; i < uniformtext::Keys; ++i) {
            const QString line = QString::fromLatin1(lines[1 + i]);
            const QString name = QStringLiteral("text%1=").arg(i);
            ASSERT_TRUE(line.startsWith(name)) << line.toStdString();
            ASSERT_TRUE(uniformtext::IsWhole(line.mid(name.size()))) << line.toStdString();
            // All of one commit, too.
            ASSERT_EQ(line.mid(name.size()), QString::fromLatin1(lines[1]).mid(name.size()));
        }
    }
};

TEST_F(KilledProcesses, ShowAWholeFileAtAnyMomentBeforeThat) {
    constexpr int Commits = 200;
    for (int key = 0; key < uniformtext::Keys; ++key)
        Root()->WriteString(uniformtext::Key(key), uniformtext::Make(0));
    ASSERT_TRUE(Root()->CommitKey(QString()));
    ChildProgram process;
    Start(&process, {QStringLiteral("churn"), QStringLiteral("1")});
    while (process.GetOutput().count('\n') < Commits) {
        RunTurns(1);
        ASSERT_TRUE(process.IsRunning());
        for (int i = 0; i < 20; ++i) {
            ExpectWholeFile();
            if (HasFatalFailure()) return;
        }
    }
}

TEST_F(KilledProcesses, LeaveAWholeFileThatTheNextOneOpensAtOnce) {
    constexpr int Kills = 200;
    ASSERT_TRUE(QDir().mkpath(Path(Temporary)));
    QRandomGenerator random(20261120);
    for (int key = 0; key < uniformtext::Keys; ++key)
        Root()->WriteString(uniformtext::Key(key), uniformtext::Make(0));
    ASSERT_TRUE(Root()->CommitKey(QString()));
    for (int kill = 0; kill < Kills; ++kill) {
        RunAndKill(kill * 7, static_cast<int>(random.bounded(5U)), random.bounded(3000000));
        ExpectWholeFile();
        if (HasFatalFailure()) return;
    }
    EXPECT_TRUE(Names().filter(QStringLiteral("damaged")).isEmpty());
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Reopened();
    for (int key = 0; key < uniformtext::Keys; ++key)
        EXPECT_TRUE(uniformtext::IsWhole(root->ReadString(uniformtext::Key(key), QString())));
    EXPECT_TRUE(traces.Records().empty());
    // The last one, opened here, found everybody else's leavings.
    EXPECT_EQ(Names(), QStringList({QStringLiteral("app.ini"), Temporary}));
    EXPECT_TRUE(QDir(Path(Temporary)).isEmpty());
}

}  // namespace
