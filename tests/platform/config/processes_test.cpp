// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>
#include <tests/platform/config/uniformtext.h>
#include <tests/support/tracerecorder.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>

#include <algorithm>

namespace {

class Processes : public ConfigTest {
  protected:
    void Start(QProcess* process, const QStringList& arguments) const {
        process->start(QStringLiteral(CFGWRITER), QStringList(Path()) + arguments);
        ASSERT_TRUE(process->waitForStarted());
    }
    /// Both wait for each other before they begin, so that neither is done before the other is there.
    void RunAtOnce(const QStringList& first, const QStringList& second) const {
        QProcess processes[2];
        Start(&processes[0], first);
        Start(&processes[1], second);
        for (QProcess& process : processes)
            while (!process.canReadLine())
                ASSERT_TRUE(process.waitForReadyRead());
        for (QProcess& process : processes) {
            process.write("go\n");
            ASSERT_TRUE(process.waitForBytesWritten());
        }
        for (QProcess& process : processes) {
            ASSERT_TRUE(process.waitForFinished());
            EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
            EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        }
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
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), Path(Temporary));
        process.setProcessEnvironment(environment);
        Start(&process, {QStringLiteral("churn"), QString::number(firstRound)});
        for (int i = 0; i < lines; ++i) {
            while (!process.canReadLine())
                ASSERT_TRUE(process.waitForReadyRead()) << process.readAllStandardError().toStdString();
            const QList<QByteArray> words = process.readLine().simplified().split(' ');
            if (words[0] == "opened") {
                EXPECT_LT(words[1].toInt(), 4000);  // one that is held up gives up after 5000
            }
        }
        QElapsedTimer spin;
        spin.start();
        while (spin.nsecsElapsed() < spinNs) {
        }
        process.kill();
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(process.readAllStandardError().toStdString(), "");
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
    QProcess process;
    Start(&process, {QStringLiteral("churn"), QStringLiteral("1")});
    for (int lines = 0; lines < Commits;) {
        process.waitForReadyRead(0);
        for (; process.canReadLine(); ++lines)
            process.readLine();
        ASSERT_EQ(process.state(), QProcess::Running);
        for (int i = 0; i < 20; ++i) {
            ExpectWholeFile();
            if (HasFatalFailure()) return;
        }
    }
    process.kill();
    EXPECT_TRUE(process.waitForFinished());
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
