// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

namespace {

const QString Kept = QStringLiteral("app.ini.damaged-1");

QByteArray RandomBytes() {
    QRandomGenerator random(7);
    QByteArray bytes("[S]\nk=1\n");
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>(random.bounded(256));
    return bytes + '\0';
}

struct Damage {
    const char* name;
    QByteArray bytes;
    QString defect;
};

void PrintTo(const Damage& damage, std::ostream* stream) {
    *stream << damage.name;
}

QString NoLine(int number) {
    return QStringLiteral("line %1 is neither a section nor a key").arg(number);
}

const QString NoText = QStringLiteral("it is not UTF-8 text");
const QString Binary = QStringLiteral("it is a binary file");

class DamagedFile : public ConfigTest, public testing::WithParamInterface<Damage> {
  protected:
    QString Message(const QString& defect,
                    const QString& consequence = QStringLiteral("defaults are used")) const {
        return QStringLiteral("The configuration file '") + Path() + QStringLiteral("' cannot be used (") +
               defect + QStringLiteral("); ") + consequence + QStringLiteral(", and the file is kept as '") +
               Path(Kept) + QStringLiteral("'");
    }
    void ExpectUsable() const {
        const std::unique_ptr<ICfg> root = Root();
        root->WriteInt(QStringLiteral("S/k"), 2);
        EXPECT_TRUE(root->CommitKey(QStringLiteral("S/k")));
        EXPECT_EQ(ReadByAnotherProcess(QStringLiteral("S/k")), QStringLiteral("2"));
    }
};

TEST_P(DamagedFile, IsKeptAsideWithOneTraceAndTheStoreStartsEmpty) {
    WriteFile(GetParam().bytes);
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadInt(QStringLiteral("S/k"), 9), 9);
    EXPECT_EQ(root->OpenSection(QStringLiteral("S")), nullptr);
    EXPECT_THAT(traces.Messages(), testing::ElementsAre(Message(GetParam().defect)));
    EXPECT_EQ(FileBytes(Kept), GetParam().bytes);
    ExpectUsable();
    EXPECT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(FileBytes(Kept), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Config, DamagedFile,
    testing::Values(
        Damage{"ends_in_the_header_of_a_section", "[S]\nk=1\n[Sect", NoLine(3)},
        Damage{"ends_in_the_name_of_a_key", "[S]\nk=1\nnam", NoLine(3)},
        Damage{"has_a_line_of_no_kind_amid_others", "[S]\r\nk=1\r\nrubbish\r\nl=2\r\n", NoLine(3)},
        Damage{"has_a_line_of_no_kind_before_all_sections", "rubbish\n[S]\nk=1\n", NoLine(1)},
        Damage{"has_a_content_without_key", "[S]\nk=1\n=2\n", NoLine(3)},
        Damage{"has_a_comment_for_a_key", "[S]\nk=1\n\nl ; = 2\n", NoLine(4)},
        Damage{"ends_in_a_quote", "[S]\nk=\"1\nl=2\n", QStringLiteral("the quote in line 2 is not closed")},
        Damage{"holds_random_bytes", RandomBytes(), Binary},
        Damage{"holds_zeroes_only", QByteArray(4096, '\0'), Binary},
        Damage{"is_not_utf8", "[S]\nk=1\nl=B\xFCro\n", NoText},
        Damage{"ends_in_a_character", "[S]\nk=1\nl=B\xC3", NoText}),
    [](const testing::TestParamInfo<Damage>& damage) { return damage.param.name; });

class UnusualFile : public DamagedFile {};

TEST_F(UnusualFile, AMissingOneIsNoReasonForATrace) {
    const TraceRecorder traces;
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("S/k"), 9), 9);
    EXPECT_TRUE(traces.Records().empty());
    ExpectUsable();
}

TEST_F(UnusualFile, AnEmptyOneIsNoReasonForATrace) {
    WriteFile("");
    const TraceRecorder traces;
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("S/k"), 9), 9);
    EXPECT_TRUE(traces.Records().empty());
    ExpectUsable();
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini")));
}

TEST_F(UnusualFile, AHugeOneIsKeptAsideWithoutBeingRead) {
    constexpr qint64 Size = qint64(100) * 1024 * 1024;
    WriteFile("[S]\nk=1\n");
    ASSERT_TRUE(QFile::resize(Path(), Size));
    const TraceRecorder traces;
    QElapsedTimer opening;
    opening.start();
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("S/k"), 9), 9);
    EXPECT_LT(opening.elapsed(), 3000);
    EXPECT_THAT(traces.Messages(),
                testing::ElementsAre(Message(QStringLiteral("104857600 bytes are too many"))));
    QFile kept(Path(Kept));
    EXPECT_EQ(kept.size(), Size);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.read(8), QByteArray("[S]\nk=1\n"));
    ExpectUsable();
}

TEST_F(UnusualFile, ASecondDamagedOneDoesNotReplaceTheFirst) {
    const TraceRecorder traces;
    WriteFile("first");
    Reopened();
    WriteFile("second");
    Reopened();
    EXPECT_EQ(FileBytes(Kept), QByteArray("first"));
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.damaged-2")), QByteArray("second"));
    EXPECT_EQ(traces.Records().size(), 2U);
}

TEST_F(UnusualFile, OneThatWasDamagedWhileInUseIsKeptAsideByTheNextCommitAndWrittenAnew) {
    Root()->WriteInt(QStringLiteral("S/other"), 1);
    ASSERT_TRUE(Root()->CommitKey(QString()));
    WriteFile("[S]\nk=5\nhalf a line");
    const TraceRecorder traces;
    ExpectUsable();
    EXPECT_THAT(traces.Messages(),
                testing::ElementsAre(Message(NoLine(3), QStringLiteral("what is known is written anew"))));
    EXPECT_EQ(FileBytes(Kept), QByteArray("[S]\nk=5\nhalf a line"));
    EXPECT_EQ(FileBytes(), QByteArray("[S]\nk=2\nother=1\n"));
}

// Somebody removed it by mistake, or edits it and has just emptied it.
TEST_F(UnusualFile, OneThatWasLostWhileInUseIsWrittenAnewByTheNextCommit) {
    Root()->WriteInt(QStringLiteral("S/other"), 1);
    ASSERT_TRUE(Root()->CommitKey(QString()));
    const TraceRecorder traces;
    ASSERT_TRUE(QFile::remove(Path()));
    ExpectUsable();
    EXPECT_EQ(FileBytes(), QByteArray("[S]\nk=2\nother=1\n"));
    WriteFile("");
    ExpectUsable();
    EXPECT_EQ(FileBytes(), QByteArray("[S]\nk=2\nother=1\n"));
    EXPECT_TRUE(traces.Records().empty());
}

TEST_F(UnusualFile, ADirectoryInItsPlaceStaysAndIsReportedOnce) {
    ASSERT_TRUE(QDir().mkpath(Path(QStringLiteral("app.ini/inside"))));
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadInt(QStringLiteral("k"), 9), 9);
    EXPECT_THAT(
        traces.Messages(),
        testing::ElementsAre(QStringLiteral("The configuration file '") + Path() +
                             QStringLiteral("' cannot be used (it is not a file); defaults are used")));
    root->WriteInt(QStringLiteral("k"), 1);
    EXPECT_FALSE(root->CommitKey(QStringLiteral("k")));
    EXPECT_FALSE(root->CommitKey(QStringLiteral("k")));
    EXPECT_EQ(traces.Records().size(), 2U);
    EXPECT_TRUE(QDir(Path(QStringLiteral("app.ini/inside"))).exists());
    EXPECT_EQ(root->ReadInt(QStringLiteral("k"), 9), 1);
    ASSERT_TRUE(QDir(Path()).removeRecursively());
    EXPECT_TRUE(root->CommitKey(QStringLiteral("k")));
    EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("k"), 9), 1);
}

TEST_F(UnusualFile, OneThatCouldNotBeReadIsTriedAgainAtTheNextOpening) {
    ASSERT_TRUE(QDir().mkpath(Path()));
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadInt(QStringLiteral("k"), 9), 9);
    ASSERT_TRUE(QDir(Path()).removeRecursively());
    WriteFile("k=1\n");
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("k"), 9), 1);
    EXPECT_EQ(root->ReadInt(QStringLiteral("k"), 9), 1);
    EXPECT_EQ(traces.Records().size(), 1U);
}

// A program that finds no keys writes its defaults, once at its start and again with all it knows at its end.
TEST_F(UnusualFile, OneThatCouldNotBeReadAtFirstIsNotOverwrittenByDefaults) {
    const QString key = QStringLiteral("k");
    const QString other = QStringLiteral("other");
    ASSERT_TRUE(QDir().mkpath(Path()));
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadInt(key, 0), 0);
    root->WriteInt(key, 30);
    EXPECT_FALSE(root->CommitKey(key));
    EXPECT_EQ(root->ReadInt(key, 0), 30);
    EXPECT_EQ(root->ReadInt(other, 7), 7);

    ASSERT_TRUE(QDir(Path()).removeRecursively());
    const QByteArray bytes = "[General]\nk=1\nother=2\n";
    WriteFile(bytes);
    root->WriteInt(key, 30);
    root->WriteInt(other, 7);
    EXPECT_TRUE(root->CommitKey(key));
    EXPECT_EQ(FileBytes(), bytes);
    EXPECT_EQ(root->ReadInt(key, 0), 1);
    root->WriteInt(key, 31);
    EXPECT_TRUE(root->CommitKey(key));
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nk=31\nother=2\n"));
}

}  // namespace
