// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/contenttext.h>

#include <tests/apps/mctree/commandfixture.h>

#include <limits>

using namespace mctree;

namespace {

class ContentTest : public CommandFixture {
  protected:
    template <class V, class... Parameters>
    V& Make(const char* name, Parameters&&... parameters) {
        return Add(*tree.GetRoot(), name, new V(std::forward<Parameters>(parameters)...));
    }
    values::ValueSelection& MakeSelection(const char* name) {
        auto& selection = Make<values::ValueSelection>(name);
        selection.AddItem(QStringLiteral("Idle"), 0, 0);
        selection.AddItem(QStringLiteral("Sea\x1brch"), 1, 3);
        return selection;
    }
};

QString Shown(const values::TreeItem& item) {
    return ShowContent(item).Joined();
}

TEST_F(ContentTest, EveryKindHasAName) {
    EXPECT_EQ(KindOf(*tree.GetRoot()), QStringLiteral("node"));
    EXPECT_EQ(KindOf(Make<values::Value<bool>>("a")), QStringLiteral("boolean"));
    EXPECT_EQ(KindOf(Make<values::Value<int>>("b")), QStringLiteral("integer"));
    EXPECT_EQ(KindOf(Make<values::Value<QString>>("c")), QStringLiteral("text"));
    EXPECT_EQ(KindOf(Make<values::ValueNumeric<int>>("d")), QStringLiteral("integer"));
    EXPECT_EQ(KindOf(Make<values::ValueNumeric<double>>("e")), QStringLiteral("number"));
    EXPECT_EQ(KindOf(Make<values::ValueSelection>("f")), QStringLiteral("selection"));
    EXPECT_EQ(KindOf(Make<values::ValueList<double>>("g")), QStringLiteral("list"));
}

TEST_F(ContentTest, ScriptsGetItRaw) {
    EXPECT_EQ(PlainContent(Make<values::Value<bool>>("a", true)), QStringLiteral("true"));
    EXPECT_EQ(PlainContent(Make<values::Value<bool>>("b")), QStringLiteral("false"));
    EXPECT_EQ(PlainContent(Make<values::Value<int>>("c", -7)), QStringLiteral("-7"));
    EXPECT_EQ(PlainContent(Make<values::Value<QString>>("d", QStringLiteral("a\nb"))),
              QStringLiteral("a\nb"));
    EXPECT_EQ(PlainContent(Make<values::ValueNumeric<double>>("Frequency", 3e7, 0., 1e9)),
              QStringLiteral("30000000"));
    auto& selection = MakeSelection("e");
    EXPECT_EQ(PlainContent(selection), QString());
    selection.Select(3);
    EXPECT_EQ(PlainContent(selection), QStringLiteral("Sea\x1brch"));
    auto& list = Make<values::ValueList<double>>("f");
    list.SetItems({1, 2.5, -1e30});
    EXPECT_EQ(PlainContent(list), QStringLiteral("1,2.5,-1e+30"));
    EXPECT_EQ(PlainContent(*tree.GetRoot()), QString());
}

TEST_F(ContentTest, PeopleGetUnitsAndNoControlCharacters) {
    EXPECT_EQ(Shown(Make<values::ValueNumeric<double>>("Frequency", 123456789.5, 0., 1e9)),
              QStringLiteral("123.4567895 MHz"));
    EXPECT_EQ(Shown(Make<values::ValueNumeric<int>>("SweepTime", 2500, 0, 100000)), QStringLiteral("2.5 ms"));
    EXPECT_EQ(Shown(Make<values::Value<QString>>("Comment", QStringLiteral("a\nb"))),
              QStringLiteral("a\\nb"));
    auto& selection = MakeSelection("OperationMode");
    EXPECT_EQ(Shown(selection), QStringLiteral("(none)"));
    selection.Select(3);
    EXPECT_EQ(Shown(selection), QStringLiteral("Sea\\x1brch"));
    auto& list = Make<values::ValueList<double>>("numbers");
    list.SetItems({1, 2.5});
    EXPECT_EQ(Shown(list), QStringLiteral("1, 2.5"));
    EXPECT_EQ(Shown(*tree.GetRoot()), QStringLiteral("5 items"));
    EXPECT_EQ(Shown(AddNode(*tree.GetRoot(), "empty")), QStringLiteral("0 items"));
}

TEST_F(ContentTest, TraitsTellLimitsAccessAndDelivery) {
    using Number = values::ValueNumeric<int>;
    EXPECT_EQ(ShowTraits(Make<Number>("a")), QString());
    EXPECT_EQ(ShowTraits(Make<Number>("b", 0, -5, 100)), QStringLiteral("-5 .. 100"));
    EXPECT_EQ(ShowTraits(Make<Number>("c", 0, 0, std::numeric_limits<int>::max())), QStringLiteral("0 .."));
    EXPECT_EQ(ShowTraits(Make<Number>("d", 0, std::numeric_limits<int>::lowest(), 7)),
              QStringLiteral(".. 7"));
    EXPECT_EQ(ShowTraits(Make<values::ValueNumeric<double>>("Frequency", 0., 0., 3e9)),
              QStringLiteral("0 Hz .. 3000 MHz"));
    auto& text = Make<values::Value<QString>>("e");
    text.SetDelivery(values::EDelivery::EveryChange);
    text.SetWritable(false);
    EXPECT_EQ(ShowTraits(text), QStringLiteral("read-only, every change"));
}

TEST_F(ContentTest, ItemsAreShownUpToABound) {
    const auto& selection = MakeSelection("a");
    EXPECT_EQ(ShowItems(selection, 2), QStringLiteral("Idle (0), Sea\\x1brch (3)"));
    EXPECT_EQ(ShowItems(selection, 1), QStringLiteral("Idle (0), ..."));
}

struct DecimalRow {
    const char* name;
    double number;
    const char* text;
};

class DecimalTest : public testing::TestWithParam<DecimalRow> {};

TEST_P(DecimalTest, IsShortAndExact) {
    EXPECT_EQ(DecimalText(GetParam().number), QLatin1String(GetParam().text));
    EXPECT_EQ(DecimalText(GetParam().number).toDouble(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    , DecimalTest,
    testing::Values(DecimalRow{"Zero", 0, "0"}, DecimalRow{"Tenth", 0.1, "0.1"},
                    DecimalRow{"Frequency", 123450000, "123450000"},
                    DecimalRow{"Digits", 1.0 / 3, "0.3333333333333333"},
                    DecimalRow{"Small", 1e-6, "0.000001"}, DecimalRow{"Tiny", 2e-300, "2e-300"},
                    DecimalRow{"Great", 1e15, "1000000000000000"}, DecimalRow{"Huge", -1e300, "-1e+300"},
                    DecimalRow{"Infinite", std::numeric_limits<double>::infinity(), "inf"}),
    RowName());

}  // namespace
