// SPDX-License-Identifier: Apache-2.0
// What one save asks of the system.
#include <platform/config/cfgcenter.h>
#include <platform/config/cfgsave.h>
#include <platform/values/persistant.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/filecalls_glibc.h>

namespace {

const QString Key = QStringLiteral("k");

class SaveCalls : public ConfigTest {
  protected:
    static void CommitOneByOne(ICfg& root, int keys, int content) {
        for (int i = 0; i < keys; ++i) {
            root.WriteInt(QStringLiteral("key%1").arg(i), content);
            EXPECT_TRUE(root.CommitKey(QStringLiteral("key%1").arg(i)));
        }
    }
    void StartCounting() const { filecalls::Start(Path(QStringLiteral(".")).chopped(2)); }
};

TEST_F(SaveCalls, OneTransactionForAnyNumberOfKeys) {
    const std::unique_ptr<ICfg> root = Root();
    for (int content = 0; content < 3; ++content) {
        StartCounting();
        {
            const CfgSave save;
            CommitOneByOne(*root, 50, content);
        }
        EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction);
    }
}

TEST_F(SaveCalls, OneTransactionPerCommitWithoutASave) {
    const std::unique_ptr<ICfg> root = Root();
    StartCounting();
    CommitOneByOne(*root, 5, 1);
    EXPECT_EQ(filecalls::GetCalls(), (std::vector<int>{5, 5, 5, 5, 5}));
}

TEST_F(SaveCalls, ALockAndALookForWhatTheFileHoldsAlready) {
    const std::unique_ptr<ICfg> root = Root();
    CommitOneByOne(*root, 1, 1);
    StartCounting();
    CommitOneByOne(*root, 1, 1);
    EXPECT_EQ(filecalls::GetCalls(), (std::vector<int>{1, 1, 0, 0, 0}));
}

TEST_F(SaveCalls, NothingForWhatAHeldFileHoldsAlready) {
    const std::unique_ptr<ICfg> root = Root();
    CommitOneByOne(*root, 1, 1);
    QString error;
    ASSERT_TRUE(CfgCenter::Instance().HoldStore(&error));
    StartCounting();
    CommitOneByOne(*root, 1, 1);
    EXPECT_EQ(filecalls::GetCalls(), std::vector<int>(5, 0));
}

TEST_F(SaveCalls, OneReadToOpenAFile) {
    Root()->WriteInt(Key, 1);
    ASSERT_TRUE(Root()->CommitKey(Key));
    StartCounting();
    EXPECT_EQ(Reopened()->ReadInt(Key, 0), 1);
    EXPECT_EQ(filecalls::GetCalls(), (std::vector<int>{0, 1, 0, 0, 0}));
}

TEST_F(SaveCalls, OneTransactionForAllMembersThatAreKept) {
    Root();  // opens the store
    int members[6] = {1, 2, 3, 4, 5, 6};
    values::Persistant persistant(QStringLiteral("Window"), nullptr);
    for (int& member : members)
        persistant.Add(&member, QStringLiteral("member%1").arg(member), 0);
    StartCounting();
    persistant.Write(QString(), ICfg::Default);
    EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction);
}

}  // namespace
