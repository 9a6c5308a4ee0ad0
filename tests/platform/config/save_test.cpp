// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>
#include <platform/config/cfgsave.h>
#include <platform/config/store/cfglock.h>

#include <tests/platform/config/configfixture.h>
#include <tests/platform/config/systemreasons.h>
#include <tests/support/tracerecorder.h>

#include <QtCore/QDir>

#include <optional>

namespace {

const QString Key = QStringLiteral("k");
const QString Other = QStringLiteral("other");

class Save : public ConfigTest {
  protected:
    static void CommitBoth(ICfg& root) {
        root.WriteInt(Key, 1);
        EXPECT_TRUE(root.CommitKey(Key));
        root.WriteInt(Other, 2);
        EXPECT_TRUE(root.CommitKey(Other));
    }
    const QByteArray Both = "[General]\nk=1\nother=2\n";
};

TEST_F(Save, BringsEverythingToTheFileAtItsEndAndNothingBefore) {
    const std::unique_ptr<ICfg> root = Root();
    {
        const CfgSave save;
        CommitBoth(*root);
        EXPECT_TRUE(Names().isEmpty());
        EXPECT_EQ(Root()->ReadInt(Other, 0), 2);
    }
    EXPECT_EQ(FileBytes(), Both);
}

TEST_F(Save, WithinAnotherEndsWithThat) {
    const std::unique_ptr<ICfg> root = Root();
    CfgSave outer;
    {
        CfgSave inner;
        CommitBoth(*root);
        EXPECT_TRUE(inner.End());
    }
    EXPECT_TRUE(Names().isEmpty());
    EXPECT_TRUE(outer.End());
    EXPECT_EQ(FileBytes(), Both);
}

class BlockedSave : public Save {
  protected:
    void SetUp() override {
        Save::SetUp();
        // In the way of superusers too.
        ASSERT_TRUE(QDir().mkpath(Path() + QStringLiteral(".next/in the way")));
    }
    /// What a save of \a keys has to say at its end.
    QString ProblemOf(const QStringList& keys) {
        const std::unique_ptr<ICfg> root = Root();
        CfgSave save;
        for (const QString& key : keys)
            root->WriteInt(key, 1);
        EXPECT_TRUE(root->CommitKey(Key));
        EXPECT_FALSE(save.End());
        return save.GetProblem();
    }
    const TraceRecorder m_traces;
};

TEST_F(BlockedSave, SaysWhyAndNamesTheKeys) {
    EXPECT_EQ(ProblemOf({Key, QStringLiteral("Section/key")}),
              QStringLiteral("the configuration file '%1' cannot be written (%2); not saved: Section/key, k")
                  .arg(Path(), systemreasons::AFolderIsInTheWay()));
}

TEST_F(BlockedSave, NamesAsManyKeysAsFitIntoALine) {
    QStringList keys;
    for (int i = 10; i < 99; ++i)
        keys << QStringLiteral("a rather long name %1").arg(i);
    const QString problem = ProblemOf(keys);
    EXPECT_TRUE(problem.contains(QStringLiteral("not saved: a rather long name 10, a rather")))
        << problem.toStdString();
    EXPECT_TRUE(problem.endsWith(QStringLiteral(" and 72 more"))) << problem.toStdString();
    EXPECT_LT(problem.size() - Path().size(), 600);
}

TEST_F(Save, IsOverOnceItWasEnded) {
    const std::unique_ptr<ICfg> root = Root();
    CfgSave save;
    EXPECT_TRUE(save.End());
    CommitBoth(*root);
    EXPECT_EQ(FileBytes(), Both);
    EXPECT_TRUE(save.End());
}

TEST_F(Save, LeavesWhatNobodyCommittedToTheNextCommit) {
    const std::unique_ptr<ICfg> root = Root();
    {
        const CfgSave save;
        root->WriteInt(Key, 1);
    }
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Save, IsOfAllStores) {
    const std::unique_ptr<ICfg> first = Root();
    CfgCenter::Instance().SetStorePath(Path(QStringLiteral("second.ini")));
    const std::unique_ptr<ICfg> second = Root();
    {
        const CfgSave save;
        CommitBoth(*first);
        CommitBoth(*second);
        EXPECT_TRUE(Names().isEmpty());
    }
    EXPECT_EQ(FileBytes(), Both);
    EXPECT_EQ(FileBytes(QStringLiteral("second.ini")), Both);
}

TEST_F(Save, DoesNotHoldUpTheEndOfAStore) {
    std::unique_ptr<ICfg> root = Root();
    const CfgSave save;
    CommitBoth(*root);
    root.reset();
    CfgCenter::Instance().SetStorePath(Path(QStringLiteral("second.ini")));
    EXPECT_EQ(FileBytes(), Both);
}

TEST_F(Save, TellsAtItsEndWhatCannotBeWritten) {
    CfgLock lock(Path(QStringLiteral("app.ini.writer")));
    ASSERT_EQ(lock.Try(), CfgLock::EOutcome::Held);
    CfgCenter::Instance().SetPatience(std::chrono::milliseconds(1));
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    {
        CfgSave save;
        CommitBoth(*root);
        EXPECT_FALSE(save.End());
    }
    EXPECT_EQ(traces.Records().size(), 1U);
    lock.Release();
    EXPECT_TRUE(root->CommitKey(Key));
    EXPECT_EQ(FileBytes(), Both);
    CfgCenter::Instance().SetPatience(std::chrono::seconds(1));
}

}  // namespace
