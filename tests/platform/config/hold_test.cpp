// SPDX-License-Identifier: Apache-2.0
// A server keeps its file, and what people edit in it meanwhile.
#include <platform/config/cfgcenter.h>
#include <platform/config/store/cfglock.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString HoldName = QStringLiteral("app.ini.server");

class Held : public ConfigTest {
  protected:
    static QString Hold() {
        QString error;
        const bool isHeld = CfgCenter::Instance().HoldStore(&error);
        EXPECT_EQ(isHeld, error.isEmpty());
        return error;
    }
    /// A server that knows what it wrote: a, b and c hold 1.
    std::unique_ptr<ICfg> Serve() const {
        WriteFile("[General]\na=1\nb=1\nc=1\n");
        EXPECT_EQ(Hold(), QString());
        return Root();
    }
    /// What a save of all that a server knows does.
    static void SaveAll(ICfg& root, int a, int b, int c) {
        root.WriteInt(QStringLiteral("a"), a);
        root.WriteInt(QStringLiteral("b"), b);
        root.WriteInt(QStringLiteral("c"), c);
        EXPECT_TRUE(root.CommitKey(QString()));
    }
    static QStringList Edits() { return CfgCenter::Instance().LookForEdits(); }
};

TEST_F(Held, ByOneServerAtATimeWhoseNameASecondIsTold) {
    CfgLock other(Path(HoldName));
    ASSERT_EQ(other.Try(), CfgLock::EOutcome::Held);
    const std::string error = Hold().toStdString();
    EXPECT_THAT(error, HasSubstr("the configuration file '" + Path().toStdString() +
                                 "' is used by mcstest (process "));
    EXPECT_THAT(error, HasSubstr(") since 2"));
    other.Release();
    EXPECT_EQ(Hold(), QString());
    EXPECT_EQ(other.Try(), CfgLock::EOutcome::Taken);
    EXPECT_EQ(Hold(), QString());  // it is its own already
}

TEST_F(Held, ByNobodyWhereItCannotBeToldWhetherAnotherDoes) {
    ASSERT_TRUE(QDir().mkpath(Path(HoldName)));
    const std::string error = Hold().toStdString();
    EXPECT_THAT(error,
                HasSubstr("whether another server uses the configuration file '" + Path().toStdString() +
                          "' cannot be told (" + Path(HoldName).toStdString() + ": "));
    ASSERT_TRUE(QDir().rmdir(Path(HoldName)));
    EXPECT_EQ(Hold(), QString());
}

TEST_F(Held, UntilTheStoreGoes) {
    ASSERT_EQ(Hold(), QString());
    EXPECT_THAT(Names(), ElementsAre(HoldName));
    CfgCenter::Instance().SetStorePath(Path(QStringLiteral("other.ini")));
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Held, OthersMayStillWriteKeys) {
    const std::unique_ptr<ICfg> root = Serve();
    EXPECT_TRUE(WriteByAnotherProcess(QStringLiteral("d"), QStringLiteral("4")));
    SaveAll(*root, 2, 1, 1);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\na=2\nb=1\nc=1\nd=4\n"));
}

TEST_F(Held, NotIfItCannotBeRead) {
    ASSERT_TRUE(QDir().mkpath(Path()));
    const TraceRecorder traces;
    EXPECT_EQ(Hold(),
              QStringLiteral("the configuration file '%1' cannot be used (it is not a file)").arg(Path()));
    ASSERT_TRUE(QDir().rmdir(Path()));
    EXPECT_TRUE(Names().isEmpty());
    EXPECT_EQ(Hold(), QString());
}

struct Edit {
    const char* name;
    QByteArray edited;
    std::vector<int> saved;  ///< of a, b and c
    QByteArray expected;
    QStringList lasting;
    QString overruled = QString();
};

void PrintTo(const Edit& edit, std::ostream* stream) {
    *stream << edit.name;
}

const QString A = QStringLiteral("a");
const QString B = QStringLiteral("b");

const Edit Table[] = {
    {"nothing", "[General]\na=1\nb=1\nc=1\n", {1, 1, 1}, "[General]\na=1\nb=1\nc=1\n", {}},
    {"a_comment", "; said\na=1\nb=1\nc=1\n", {1, 1, 1}, "; said\na=1\nb=1\nc=1\n", {}},
    {"a_key_that_the_server_leaves_alone", "a=5\nb=1\nc=1\n", {1, 2, 1}, "[General]\na=5\nb=2\nc=1\n", {A}},
    {"a_key_that_the_server_changes_too", "a=5\nb=1\nc=1\n", {2, 1, 1}, "[General]\na=2\nb=1\nc=1\n", {}, A},
    {"a_key_that_the_server_changes_alike", "a=5\nb=1\nc=1\n", {5, 2, 1}, "[General]\na=5\nb=2\nc=1\n", {}},
    {"a_new_key",
     "a=1\nb=1\nc=1\nd=4\n",
     {1, 2, 1},
     "[General]\na=1\nb=2\nc=1\nd=4\n",
     {QStringLiteral("d")}},
    {"a_key_that_is_removed", "b=1\nc=1\n", {1, 2, 1}, "[General]\nb=2\nc=1\n", {A}},
    {"a_key_that_is_removed_and_the_server_changes",
     "b=1\nc=1\n",
     {3, 2, 1},
     "[General]\na=3\nb=2\nc=1\n",
     {},
     A},
    {"several_keys", "a=5\nb=6\nc=1\n", {1, 1, 1}, "a=5\nb=6\nc=1\n", {A, B}},
};

class EditedFile : public Held, public testing::WithParamInterface<Edit> {};

TEST_P(EditedFile, IsMergedKeyByKeyByTheNextSaveAndTold) {
    const Edit& edit = GetParam();
    const std::unique_ptr<ICfg> root = Serve();
    const TraceRecorder traces;
    WriteFile(edit.edited);
    SaveAll(*root, edit.saved[0], edit.saved[1], edit.saved[2]);
    EXPECT_EQ(FileBytes(), edit.expected);
    EXPECT_EQ(Edits(), edit.lasting);
    const QString overruled =
        QStringLiteral("The configuration file '%1' was edited; the program's own content holds of: %2");
    EXPECT_EQ(traces.Messages(), edit.overruled.isEmpty()
                                     ? std::vector<QString>()
                                     : std::vector<QString>{overruled.arg(Path(), edit.overruled)});
    EXPECT_EQ(Edits(), QStringList());
    // Who saves the same again does not mean to undo the edit, however often.
    SaveAll(*root, edit.saved[0], edit.saved[1], edit.saved[2]);
    EXPECT_EQ(FileBytes(), edit.expected);
    EXPECT_EQ(Edits(), QStringList());
}

TEST_P(EditedFile, IsSeenBeforeASaveToo) {
    const Edit& edit = GetParam();
    const std::unique_ptr<ICfg> root = Serve();
    WriteFile(edit.edited);
    EXPECT_EQ(Edits(), QStringList());  // it may still be written
    Edits();
    SaveAll(*root, edit.saved[0], edit.saved[1], edit.saved[2]);
    EXPECT_EQ(FileBytes(), edit.expected);
}

INSTANTIATE_TEST_SUITE_P(Config, EditedFile, testing::ValuesIn(Table),
                         [](const testing::TestParamInfo<Edit>& edit) { return edit.param.name; });

TEST_F(Held, AnEditIsToldOnceItRested) {
    const std::unique_ptr<ICfg> root = Serve();
    WriteFile("a=50\n");
    EXPECT_EQ(Edits(), QStringList());
    WriteFile("a=50\nb=1\nc=1\n");
    EXPECT_EQ(Edits(), QStringList());
    EXPECT_EQ(Edits(), QStringList(A));
    EXPECT_EQ(Edits(), QStringList());
    EXPECT_EQ(root->ReadInt(A, 0), 50);
}

TEST_F(Held, AnEditThatIsUndoneIsNoEdit) {
    const std::unique_ptr<ICfg> root = Serve();
    WriteFile("a=50\nb=1\nc=1\n");
    Edits();
    EXPECT_EQ(Edits(), QStringList(A));
    WriteFile("[General]\na=1\nb=1\nc=1\n");
    Edits();
    EXPECT_EQ(Edits(), QStringList(A));
    SaveAll(*root, 2, 1, 1);
    SaveAll(*root, 1, 1, 1);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\na=1\nb=1\nc=1\n"));
}

// As a list of modules does that is saved as a whole.
TEST_F(Held, AnEditOutlivesThatItsSectionIsRemovedAndWrittenAnew) {
    WriteFile("[S]\na=1\nb=1\n");
    ASSERT_EQ(Hold(), QString());
    const std::unique_ptr<ICfg> root = Root();
    WriteFile("[S]\na=50\nb=1\nmine=7\n");
    Edits();
    EXPECT_EQ(Edits(), (QStringList{QStringLiteral("S/a"), QStringLiteral("S/mine")}));
    root->RemoveSection(QStringLiteral("S"));
    root->WriteInt(QStringLiteral("S/a"), 1);
    root->WriteInt(QStringLiteral("S/b"), 2);
    ASSERT_TRUE(root->CommitKey(QString()));
    EXPECT_EQ(FileBytes(), QByteArray("[S]\na=50\nb=2\n"));
}

// A server that was never told a setting works with a default, which it writes with all the others at its
// end.
class AddedKey : public Held, public testing::WithParamInterface<bool> {};

TEST_P(AddedKey, OutlivesTheDefaultThatTheServerHasMeanwhile) {
    ASSERT_EQ(Hold(), QString());
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadString(QStringLiteral("text"), QStringLiteral("x")), QStringLiteral("x"));
    EXPECT_EQ(root->ReadInt(QStringLiteral("number"), 7), 7);
    EXPECT_FALSE(root->ReadBool(QStringLiteral("truth"), false));
    const auto saveAll = [&root] {
        root->WriteString(QStringLiteral("text"), QStringLiteral("x"));
        root->WriteInt(QStringLiteral("number"), 8);
        root->WriteBool(QStringLiteral("truth"), false);
        ASSERT_TRUE(root->CommitKey(QString()));
    };
    const QByteArray expected = "[General]\nnumber=8\ntext=y\ntruth=true\n";
    WriteFile("text=y\nnumber=7\ntruth=true\n");
    if (GetParam()) {
        Edits();
        EXPECT_EQ(Edits(), (QStringList{QStringLiteral("text"), QStringLiteral("truth")}));
    }
    saveAll();
    EXPECT_EQ(FileBytes(), expected);
    saveAll();
    EXPECT_EQ(FileBytes(), expected);
}

INSTANTIATE_TEST_SUITE_P(Config, AddedKey, testing::Bool(), [](const testing::TestParamInfo<bool>& isSeen) {
    return isSeen.param ? "SeenBeforeTheSave" : "MetByTheSave";
});

TEST_F(Held, AFileThatWasRemovedIsWrittenAgainByASaveOfTheSame) {
    const std::unique_ptr<ICfg> root = Serve();
    const QByteArray bytes = FileBytes();
    for (const bool isSeen : {false, true}) {
        ASSERT_TRUE(QFile::remove(Path()));
        if (isSeen) {
            Edits();
            EXPECT_EQ(Edits(), QStringList());
        }
        SaveAll(*root, 1, 1, 1);
        EXPECT_EQ(FileBytes(), bytes);
    }
}

TEST_F(Held, AnEditThatBreaksTheFileIsTracedAndKeptAsideByTheNextSave) {
    const std::unique_ptr<ICfg> root = Serve();
    const QByteArray broken = "a=50\nb\nc=1\n";
    WriteFile(broken);
    const TraceRecorder traces;
    Edits();
    EXPECT_EQ(Edits(), QStringList());
    EXPECT_THAT(
        traces.Messages(),
        ElementsAre(QStringLiteral("The configuration file '%1' was edited, and cannot be used any more "
                                   "(line 2 is neither a section nor a key)")
                        .arg(Path())));
    EXPECT_EQ(FileBytes(), broken);
    Edits();
    EXPECT_EQ(traces.Records().size(), 1U);
    SaveAll(*root, 2, 1, 1);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\na=2\nb=1\nc=1\n"));
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.damaged-1")), broken);
}

}  // namespace
