// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>

namespace {

class Sections : public ConfigTest {
  protected:
    static std::unique_ptr<ICfg> Open(const QString& name) {
        return std::unique_ptr<ICfg>(Root()->OpenSection(name));
    }
    static std::unique_ptr<ICfg> Provide(const QString& name) {
        return std::unique_ptr<ICfg>(Root()->ProvideSection(name));
    }
};

const QString A = QStringLiteral("A");
const QString B = QStringLiteral("B");
const QString Key = QStringLiteral("k");

TEST_F(Sections, AnAbsentOneIsNotOpened) {
    EXPECT_EQ(Open(A), nullptr);
    Root()->WriteInt(A, 1);  // a key of that name is no section
    Root()->WriteInt(QStringLiteral("AB/k"), 1);
    EXPECT_EQ(Open(A), nullptr);
    EXPECT_EQ(Open(QStringLiteral("a")), nullptr);
}

TEST_F(Sections, OneThatWasProvidedIsFoundThoughEmpty) {
    ASSERT_NE(Provide(A), nullptr);
    EXPECT_NE(Open(A), nullptr);
    EXPECT_EQ(Open(B), nullptr);
}

TEST_F(Sections, OneThatWasProvidedBelowOthersMakesThoseToo) {
    ASSERT_NE(Provide(QStringLiteral("A/B")), nullptr);
    const std::unique_ptr<ICfg> outer = Open(A);
    ASSERT_NE(outer, nullptr);
    EXPECT_NE(std::unique_ptr<ICfg>(outer->OpenSection(B)), nullptr);
    EXPECT_EQ(Open(B), nullptr);
}

TEST_F(Sections, OneInWhichNothingWasWrittenLastsAsLongAsTheProcess) {
    Provide(A);
    Root()->WriteInt(Key, 1);
    ASSERT_TRUE(Root()->CommitKey(Key));
    EXPECT_NE(Open(A), nullptr);
    Reopened();
    EXPECT_EQ(Open(A), nullptr);
}

TEST_F(Sections, NestedOnesKeepTheirKeysApart) {
    const std::unique_ptr<ICfg> outer = Provide(A);
    const std::unique_ptr<ICfg> inner(outer->ProvideSection(B));
    Root()->WriteInt(Key, 1);
    outer->WriteInt(Key, 2);
    inner->WriteInt(Key, 3);
    std::unique_ptr<ICfg>(inner->ProvideSection(A))->WriteInt(Key, 4);
    ASSERT_TRUE(inner->CommitKey(Key));
    Reopened();
    EXPECT_EQ(Root()->ReadInt(Key, 0), 1);
    ASSERT_NE(Open(A), nullptr);
    EXPECT_EQ(Open(A)->ReadInt(Key, 0), 2);
    EXPECT_EQ(Open(A)->ReadInt(QStringLiteral("B/k"), 0), 3);
    ASSERT_NE(Open(QStringLiteral("A/B/A")), nullptr);
    EXPECT_EQ(Open(QStringLiteral("A/B/A"))->ReadInt(Key, 0), 4);
}

TEST_F(Sections, TheOneWithoutANameIsTheSameSection) {
    Provide(A)->WriteInt(Key, 2);
    const std::unique_ptr<ICfg> section = Open(A);
    EXPECT_EQ(std::unique_ptr<ICfg>(section->OpenSection(QString()))->ReadInt(Key, 0), 2);
    EXPECT_EQ(std::unique_ptr<ICfg>(section->ProvideSection(QStringLiteral("/")))->ReadInt(Key, 0), 2);
    section->RemoveSection(QString());
    section->RemoveSection(QStringLiteral("/"));
    EXPECT_EQ(section->ReadInt(Key, 0), 2);
}

TEST_F(Sections, RemovingTakesAllThatIsInItAndNothingElse) {
    const QStringList inside = {QStringLiteral("A/k"), QStringLiteral("A/B/k"), QStringLiteral("A/B/C/k")};
    const QStringList outside = {QStringLiteral("A"), QStringLiteral("A "), QStringLiteral("AB/k"),
                                 QStringLiteral("a/k"), QStringLiteral("B/A/k")};
    for (const QString& key : inside + outside)
        Root()->WriteInt(key, 1);
    ASSERT_TRUE(Root()->CommitKey(Key));
    Root()->RemoveSection(A);
    const auto check = [&](const char* when) {
        EXPECT_EQ(Open(A), nullptr) << when;
        for (const QString& key : inside)
            EXPECT_EQ(Root()->ReadInt(key, 0), 0) << when << key.toStdString();
        for (const QString& key : outside)
            EXPECT_EQ(Root()->ReadInt(key, 0), 1) << when << key.toStdString();
    };
    check("at once");
    ASSERT_TRUE(Root()->CommitKey(Key));
    check("committed");
    Reopened();
    check("reopened");
}

TEST_F(Sections, KnowTheKeysOfThemselvesAndOfAllBelow) {
    for (const char* const key : {"A/k", "A/B/k", "A/B/C/k", "AB/k", "k", "a/k"})
        Root()->WriteInt(QString::fromLatin1(key), 1);
    Provide(QStringLiteral("A/empty"));
    Root()->WriteInt(QStringLiteral("A/gone/k"), 1);
    Root()->RemoveSection(QStringLiteral("A/gone"));
    const auto check = [] {
        EXPECT_EQ(Open(A)->GetKeys(),
                  (QStringList{QStringLiteral("B/C/k"), QStringLiteral("B/k"), QStringLiteral("k")}));
        EXPECT_EQ(Root()->GetKeys().size(), 6);
    };
    check();
    ASSERT_TRUE(Root()->CommitKey(Key));
    Reopened();
    check();
}

TEST_F(Sections, RemovingAnEmptyOneTakesItToo) {
    Provide(QStringLiteral("A/B"));
    Provide(QStringLiteral("AB"));
    Root()->RemoveSection(A);
    EXPECT_EQ(Open(A), nullptr);
    EXPECT_NE(Open(QStringLiteral("AB")), nullptr);
}

TEST_F(Sections, RemovingAnAbsentOneLeavesAllAsItIs) {
    Root()->WriteInt(Key, 1);
    ASSERT_TRUE(Root()->CommitKey(Key));
    const QByteArray bytes = FileBytes();
    Root()->RemoveSection(A);
    EXPECT_TRUE(Root()->CommitKey(Key));
    EXPECT_EQ(FileBytes(), bytes);
}

TEST_F(Sections, ARemovedOneReadsAsFallbacksAndCanBeWrittenAgain) {
    const std::unique_ptr<ICfg> section = Provide(A);
    section->WriteInt(Key, 1);
    section->WriteInt(B, 1);
    ASSERT_TRUE(section->CommitKey(Key));
    Root()->RemoveSection(A);
    EXPECT_EQ(section->ReadInt(Key, 9), 9);
    section->WriteInt(Key, 2);
    EXPECT_NE(Open(A), nullptr);
    ASSERT_TRUE(section->CommitKey(Key));
    Reopened();
    ASSERT_NE(Open(A), nullptr);
    EXPECT_EQ(Open(A)->ReadInt(Key, 9), 2);
    EXPECT_EQ(Open(A)->ReadInt(B, 9), 9);
}

}  // namespace
