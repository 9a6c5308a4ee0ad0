// SPDX-License-Identifier: Apache-2.0
// Contents that come, of every kind of value.
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/client/treemirror.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <tests/support/allocationcounter.h>
#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

namespace {

using vt::Content;
using vt::EItemKind;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// A kind, two contents that it can have, and what it cannot.
struct Row {
    const char* name;
    EItemKind kind;
    Content first;
    Content second;
    std::vector<Content> impossible;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

const double Nan = std::numeric_limits<double>::quiet_NaN();
const Content Nothing;
const Content Number = qint64{1};
const Content Real = 1.5;
const Content Truth = true;
const Content Text = S("text");
const Content List = QVector<double>{1.0};
constexpr qint64 BeyondInt = qint64{std::numeric_limits<int>::max()} + 1;
constexpr qint64 BelowInt = qint64{std::numeric_limits<int>::min()} - 1;

const Row Rows[] = {
    {"Bool", EItemKind::Bool, false, true, {Nothing, Number, Real, Text, List}},
    {"Int", EItemKind::Int, qint64{1}, qint64{-7}, {Nothing, Truth, Real, Text, List, BeyondInt, BelowInt}},
    {"Text", EItemKind::Text, S("one"), S("another"), {Nothing, Truth, Number, Real, List}},
    {"NumericInt",
     EItemKind::NumericInt,
     qint64{1},
     qint64{std::numeric_limits<int>::max()},
     {Nothing, Truth, Real, Text, List, BeyondInt, BelowInt}},
    {"NumericDouble", EItemKind::NumericDouble, 1.0, -2.5, {Nothing, Truth, Text, List, Nan}},
    {"Selection", EItemKind::Selection, Nothing, qint64{1}, {Truth, Real, Text, List}},
    {"List",
     EItemKind::List,
     QVector<double>{},
     QVector<double>{1.0, 2.0},
     {Nothing, Truth, Number, Real, Text, QVector<double>{1.0, Nan}}},
};

class MirrorContents : public testing::TestWithParam<Row>, private vt::TreeMirror::IHost {
  protected:
    void SetUp() override {
        m_mirror.Start({S("/")}, 1);
        vt::TreeChange added;
        added.change = vt::EChange::Added;
        ASSERT_TRUE(Apply(added));
        added.id = 1;
        added.name = S("v");
        added.item.kind = GetParam().kind;
        added.item.content = GetParam().first;
        added.item.minimum =
            GetParam().kind == EItemKind::NumericInt ? Content(qint64{-100}) : Content(-100.0);
        added.item.maximum = GetParam().kind == EItemKind::NumericInt
                                 ? Content(qint64{std::numeric_limits<int>::max()})
                                 : Content(100.0);
        added.item.choices = {{S("A"), 0.0, 10}, {S("B"), 0.0, 20}};
        ASSERT_TRUE(Apply(added));
        ASSERT_TRUE(m_mirror.Finish(&m_error));
        m_value = static_cast<values::ValueBase*>(m_tree.FindItem(S("/L/v")));
        ASSERT_NE(m_value, nullptr);
    }
    bool Apply(const vt::TreeChange& change) { return m_mirror.Apply(change, &m_error); }
    bool Change(const Content& content) {
        m_change.id = 1;
        m_change.item.content = content;
        return Apply(m_change);
    }
    Content Shown() const { return vt::Operations(GetParam().kind)->content(*m_value); }

    void OnEdits(vt::TreeMirror& /*mirror*/) override { ++m_edits; }
    quint32 SendWrite(vt::TreeMirror& /*mirror*/, vt::WriteMessage* /*write*/) override { return 0; }
    quint32 SendCreation(vt::TreeMirror& /*mirror*/, vt::CreateMessage* /*create*/,
                         const values::TreeItem& /*item*/) override {
        return 0;
    }
    void OnRootDeleted(vt::TreeMirror& /*mirror*/) override {}

    RecordingObserver m_observer;  ///< outlives the item
    values::Tree m_tree;
    vt::TreeMirror m_mirror{S("/L"), S("/S"), *this};
    values::ValueBase* m_value = nullptr;
    vt::TreeChange m_change;
    QString m_error;
    int m_edits = 0;
};

TEST_P(MirrorContents, AreShownAndToldAndNoEdits) {
    m_value->AddObserver(&m_observer);
    for (const Content& content : {GetParam().second, GetParam().first}) {
        EXPECT_TRUE(Change(content)) << m_error.toStdString();
        EXPECT_EQ(Shown(), content);
    }
    EXPECT_EQ(m_observer.Codes().size(), 2U);
    EXPECT_EQ(m_edits, 0);
}

TEST_P(MirrorContents, AreRefusedIfNoValueOfTheKindCouldHaveThem) {
    ASSERT_TRUE(Change(GetParam().second));
    for (const Content& content : GetParam().impossible) {
        EXPECT_FALSE(Change(content)) << "of index " << content.index();
        EXPECT_EQ(m_error, S("a content that is not of the item's kind"));
        EXPECT_EQ(Shown(), GetParam().second);
    }
}

/// Whoever is told may end what the content was kept in.
TEST_P(MirrorContents, MayDestroyTheValueWhenTheyAreTold) {
    m_observer.React([this](Observable*, TChangeCode code) {
        if (code != changecode::StateChanged) m_tree.Delete(m_value);
    });
    m_value->AddObserver(&m_observer);
    EXPECT_TRUE(Change(GetParam().second));
    EXPECT_EQ(m_tree.FindItem(S("/L/v")), nullptr);
    EXPECT_TRUE(Change(GetParam().first)) << "of what was deleted here";
}

TEST_P(MirrorContents, MayEndTheMirrorWhenTheyAreTold) {
    m_observer.React([this](Observable*, TChangeCode) { m_mirror.Release(nullptr); });
    m_value->AddObserver(&m_observer);
    EXPECT_TRUE(Change(GetParam().second));
    EXPECT_EQ(Shown(), GetParam().second);
    EXPECT_TRUE(Change(GetParam().first));
    EXPECT_EQ(Shown(), GetParam().second) << "it follows nothing any more";
    m_value->DeleteObserver(&m_observer);
}

TEST_P(MirrorContents, CostNoAllocation) {
    m_value->AddObserver(&m_observer);
    for (const Content& content : {GetParam().second, GetParam().first})
        ASSERT_TRUE(Change(content));
    m_value->DeleteObserver(&m_observer);
    m_change.item.content = GetParam().second;
    const AllocationCounter counter;
    Apply(m_change);
    const std::size_t listOfTheValue = GetParam().kind == EItemKind::List ? 1 : 0;
    EXPECT_EQ(AllocationCounter::Count(), listOfTheValue);
}

INSTANTIATE_TEST_SUITE_P(All, MirrorContents, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
