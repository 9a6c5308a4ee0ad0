// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/condition.h>

#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

values::ValueBase* MakeNumber() {
    auto* const value = new values::ValueNumeric<double>(5e6, 0, 3e9);
    value->SetName(QStringLiteral("Frequency"), nullptr);
    return value;
}
values::ValueBase* MakeInteger() {
    return new values::Value<int>(5);
}
values::ValueBase* MakeText() {
    return new values::Value<QString>(QStringLiteral("connected to vm"));
}
values::ValueBase* MakeBoolean() {
    return new values::Value<bool>(true);
}
values::ValueBase* MakeSelection() {
    auto* const selection = new values::ValueSelection();
    selection->AddItem(QStringLiteral("Ready"), 0, 16);
    selection->AddItem(QStringLiteral("Failed"), 0, 32);
    selection->Select(16);
    return selection;
}
values::ValueBase* MakeEmptySelection() {
    return new values::ValueSelection();
}

struct ConditionRow {
    const char* name;
    const char* condition;
    values::ValueBase* (*make)();
    bool holds;
    const char* error = "";
};

class ConditionTest : public testing::TestWithParam<ConditionRow> {};

TEST_P(ConditionTest, Holds) {
    const std::unique_ptr<values::ValueBase> value(GetParam().make());
    Condition condition;
    ASSERT_EQ(condition.Parse(QString::fromUtf8(GetParam().condition)), QString());
    QString error;
    EXPECT_EQ(condition.Holds(*value, &error), GetParam().holds);
    EXPECT_EQ(error, QString::fromUtf8(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    , ConditionTest,
    testing::Values(
        ConditionRow{"Exists", "exists", MakeEmptySelection, true},
        ConditionRow{"Equal", "=5 MHz", MakeNumber, true},
        ConditionRow{"EqualByTwoSigns", "==5M", MakeNumber, true},
        ConditionRow{"NotEqual", "=5", MakeNumber, false}, ConditionRow{"Unequal", "!=4", MakeInteger, true},
        ConditionRow{"NotUnequal", "!=5", MakeInteger, false}, ConditionRow{"Less", "<6", MakeInteger, true},
        ConditionRow{"NotLess", "<5", MakeInteger, false},
        ConditionRow{"LessOrEqual", "<=5", MakeInteger, true},
        ConditionRow{"Greater", ">1kHz", MakeNumber, true},
        ConditionRow{"NotGreater", ">5", MakeInteger, false},
        ConditionRow{"GreaterOrEqual", ">=5", MakeInteger, true},
        ConditionRow{"NotGreaterOrEqual", ">=6", MakeInteger, false},
        ConditionRow{"Text", "=connected to vm", MakeText, true},
        ConditionRow{"TextLike", "~connected*", MakeText, true},
        ConditionRow{"TextNotLike", "~connected", MakeText, false},
        ConditionRow{"Boolean", "=on", MakeBoolean, true},
        ConditionRow{"ItemByText", "=ready", MakeSelection, true},
        ConditionRow{"ItemByKey", "=32", MakeSelection, false},
        ConditionRow{"ItemsThatAreNotKnownYet", "=Ready", MakeEmptySelection, false},
        ConditionRow{"NoItem", "=Redy", MakeSelection, false, "\"Redy\" is none of Ready (16), Failed (32)"},
        ConditionRow{"NoOrderOfTexts", "<a", MakeText, false,
                     "is a text, which is neither less nor greater than another"}),
    RowName());

TEST(Condition, AStaleContentIsNone) {
    values::Value<int> value(5);
    value.SetState(values::Stale);
    Condition condition;
    ASSERT_EQ(condition.Parse(QStringLiteral("=5")), QString());
    QString error;
    EXPECT_FALSE(condition.Holds(value, &error));
    EXPECT_EQ(error, QString());
}

}  // namespace
