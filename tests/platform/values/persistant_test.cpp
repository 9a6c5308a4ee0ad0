// SPDX-License-Identifier: Apache-2.0
#include <platform/values/persistant.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using values::Persistant;
using values::PersistantOwner;

const QString Name = QStringLiteral("Panel");
const QString Width = QStringLiteral("Width");
const QString Height = QStringLiteral("Height");

class PersistantTest : public ConfigTest {
  protected:
    PersistantTest() { AddBoth(&m_persistant); }

    void AddBoth(Persistant* persistant) {
        persistant->Add(&m_width, Width, 10);
        persistant->Add(&m_height, Height, 20);
    }
    std::vector<int> Members() const { return {m_width, m_height}; }

    int m_width = 1;
    int m_height = 2;
    Persistant m_persistant{Name, nullptr};
};

TEST_F(PersistantTest, MembersAreKeptUnderTheirKeysInTheSectionOfTheName) {
    m_persistant.Write(QString(), ICfg::Default);
    EXPECT_EQ(FileBytes(), QByteArray("[Panel]\nHeight=2\nWidth=1\n"));
}

TEST_F(PersistantTest, MembersOfASubPathAreKeptInASectionBelow) {
    m_persistant.Write(QStringLiteral("Left/Upper"), ICfg::Default);
    m_width = 3;
    m_persistant.Write(QString(), ICfg::Default);
    EXPECT_EQ(FileBytes(),
              QByteArray("[Panel]\nHeight=2\nLeft\\Upper\\Height=2\nLeft\\Upper\\Width=1\nWidth=3\n"));
    m_persistant.Read(QStringLiteral("Left/Upper"), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(1, 2));
    m_persistant.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(3, 2));
}

TEST_F(PersistantTest, AnotherObjectOfThatNameReadsWhatWasWritten) {
    m_width = -2147483647 - 1;
    m_persistant.Write(QString(), ICfg::Default);
    m_width = m_height = 0;
    Reopened();
    Persistant fresh(Name, nullptr);
    AddBoth(&fresh);
    fresh.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(-2147483647 - 1, 2));
    Persistant other(QStringLiteral("Other"), nullptr);
    AddBoth(&other);
    other.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(10, 20));
}

TEST_F(PersistantTest, MissingKeysReadAsTheirFallbacks) {
    WriteFile("[Panel]\nWidth=5\n");
    m_persistant.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(5, 20));
}

TEST_F(PersistantTest, WithoutASectionTheFallbacksAreReadAndNoSectionIsMade) {
    m_persistant.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(10, 20));
    m_width = 1;
    m_persistant.Read(QStringLiteral("Left"), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(10, 20));
    EXPECT_EQ(Root()->OpenSection(Name), nullptr);
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(PersistantTest, ASubPathDoesNotInheritFromTheSectionAbove) {
    WriteFile("[Panel]\nWidth=5\n");
    m_persistant.Read(QStringLiteral("Left"), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(10, 20));
}

TEST_F(PersistantTest, MalformedTextReadsAsTheFallbackWithATrace) {
    WriteFile("[Panel]\nWidth=wide\nHeight=7\n");
    const TraceRecorder traces;
    m_persistant.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(10, 7));
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_TRUE(traces.Messages()[0].contains(QStringLiteral("'wide' under 'Panel/Width'")));
}

TEST_F(PersistantTest, WithoutANameTheKeysAreThoseOfTheRoot) {
    Persistant nameless(QString(), nullptr);
    AddBoth(&nameless);
    nameless.Write(QString(), ICfg::Default);
    EXPECT_EQ(FileBytes(), QByteArray("[General]\nHeight=2\nWidth=1\n"));
}

class Owner final : public PersistantOwner {
  public:
    explicit Owner(int* member) : m_member(member) {}
    void ApplyPersistantBeforeWrite() override {
        calls.append(QStringLiteral("before write %1").arg(*m_member));
        *m_member = 77;
    }
    void ApplyPersistantAfterRead() override { calls.append(QStringLiteral("after read %1").arg(*m_member)); }

    QStringList calls;

  private:
    int* m_member;
};

TEST_F(PersistantTest, TheOwnerIsCalledBeforeWritingAndAfterReading) {
    Owner owner(&m_width);
    Persistant owned(Name, &owner);
    AddBoth(&owned);
    owned.Write(QString(), ICfg::Default);
    EXPECT_EQ(FileBytes(), QByteArray("[Panel]\nHeight=2\nWidth=77\n"));
    m_width = 0;
    owned.Read(QString(), ICfg::Default);
    owned.Read(QStringLiteral("absent"), ICfg::Default);
    EXPECT_THAT(owner.calls, ElementsAre(QStringLiteral("before write 1"), QStringLiteral("after read 77"),
                                         QStringLiteral("after read 10")));
}

TEST_F(PersistantTest, AnOwnerMayLeaveBothOperationsOut) {
    PersistantOwner indifferent;
    Persistant owned(Name, &indifferent);
    AddBoth(&owned);
    owned.Write(QString(), ICfg::Default);
    m_width = 0;
    owned.Read(QString(), ICfg::Default);
    EXPECT_THAT(Members(), ElementsAre(1, 2));
}

TEST_F(PersistantTest, WithoutMembersNothingIsKept) {
    Persistant(QStringLiteral("Empty"), nullptr).Write(QString(), ICfg::Default);
    EXPECT_TRUE(Names().isEmpty());
}

}  // namespace
