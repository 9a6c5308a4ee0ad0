// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/contentinput.h>

#include <apps/mctree/text/contenttext.h>
#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

values::ValueBase* MakeBool() {
    return new values::Value<bool>(true);
}
values::ValueBase* MakeFalse() {
    return new values::Value<bool>(false);
}
values::ValueBase* MakeInt() {
    return new values::Value<int>(-1);
}
values::ValueBase* MakeText() {
    return new values::Value<QString>(QStringLiteral("before"));
}
values::ValueBase* MakeLimited() {
    return new values::ValueNumeric<int>(1, 0, 100);
}
values::ValueBase* MakeNumber() {
    return new values::ValueNumeric<double>(1.5, -1000, 1e9);
}
values::ValueBase* MakeRequest() {
    auto* const request = new values::ValueNumeric<double>(1e6, 300e3, 3e9);
    request->SetDelivery(values::EDelivery::EveryChange);
    return request;
}
values::ValueBase* MakeSelection() {
    auto* const selection = new values::ValueSelection();
    selection->AddItem(QStringLiteral("Idle"), 0, 0);
    selection->AddItem(QStringLiteral("5"), 1, 3);
    selection->AddItem(QStringLiteral("Scan"), 1, 4);
    selection->AddItem(QStringLiteral("Five"), 1, 5);
    selection->AddItem(QStringLiteral("SCAN"), 1, 6);
    selection->Select(4);
    return selection;
}
values::ValueBase* MakeList() {
    auto* const list = new values::ValueList<double>();
    list->SetItems({9});
    return list;
}

struct InputRow {
    const char* name;
    values::ValueBase* (*make)();
    const char* text;
    const char* content;  ///< that holds then
    bool isAsAsked = true;
    const char* valueName = "x";
};

class ContentInputTest : public testing::TestWithParam<InputRow> {};

TEST_P(ContentInputTest, IsSet) {
    const std::unique_ptr<values::ValueBase> value(GetParam().make());
    value->SetName(QLatin1String(GetParam().valueName), nullptr);
    const QString text = QString::fromUtf8(GetParam().text);
    EXPECT_EQ(SetFromText(*value, text), QString());
    EXPECT_EQ(PlainContent(*value), QString::fromUtf8(GetParam().content));
    EXPECT_EQ(IsAsAsked(*value, text), GetParam().isAsAsked);
}

INSTANTIATE_TEST_SUITE_P(
    , ContentInputTest,
    testing::Values(InputRow{"True", MakeFalse, "true", "true"}, InputRow{"On", MakeFalse, "On", "true"},
                    InputRow{"Yes", MakeFalse, "yes", "true"}, InputRow{"One", MakeFalse, " 1 ", "true"},
                    InputRow{"False", MakeBool, "FALSE", "false"}, InputRow{"Off", MakeBool, "off", "false"},
                    InputRow{"No", MakeBool, "no", "false"}, InputRow{"Zero", MakeBool, "0", "false"},
                    InputRow{"Integer", MakeInt, "42", "42"},
                    InputRow{"Negative", MakeInt, "-2147483648", "-2147483648"},
                    InputRow{"Greatest", MakeInt, "2147483647", "2147483647"},
                    InputRow{"Hexadecimal", MakeInt, "0xff", "255"},
                    InputRow{"WholeWithExponent", MakeInt, "2e3", "2000"},
                    InputRow{"IntegerWithUnit", MakeInt, "2.5 ms", "2500", true, "SweepTime"},
                    InputRow{"WithinLimits", MakeLimited, "99", "99"},
                    InputRow{"BeyondLimits", MakeLimited, "101", "100", false},
                    InputRow{"Number", MakeNumber, "-2.25", "-2.25"},
                    InputRow{"NumberWithExponent", MakeNumber, "1e6", "1000000"},
                    InputRow{"NumberBeyondLimits", MakeNumber, "-1001", "-1000", false},
                    InputRow{"NumberWithUnit", MakeNumber, "98.5MHz", "98500000", true, "Frequency"},
                    InputRow{"NumberWithPrefix", MakeNumber, "30M", "30000000", true, "Frequency"},
                    InputRow{"FrequencyWithComma", MakeNumber, "98,5 MHz", "98500000", true, "Frequency"},
                    InputRow{"GroupedFrequency", MakeNumber, "98 500 kHz", "98500000", true, "Frequency"},
                    InputRow{"Text", MakeText, " a b ", " a b "}, InputRow{"EmptyText", MakeText, "", ""},
                    InputRow{"TextOfOtherScripts", MakeText, "\xc2\xb5", "\xc2\xb5"},
                    InputRow{"ItemByKey", MakeSelection, "0", "Idle"},
                    InputRow{"KeyBeforeText", MakeSelection, "5", "Five"},
                    InputRow{"ItemByText", MakeSelection, "SCAN", "SCAN"},
                    InputRow{"ItemInOtherCase", MakeSelection, "idle", "Idle"},
                    InputRow{"NoItem", MakeSelection, "(none)", ""},
                    InputRow{"List", MakeList, "1, 2.5,-3", "1,2.5,-3"},
                    InputRow{"EmptyList", MakeList, "", ""}),
    RowName());

struct WrongRow {
    const char* name;
    values::ValueBase* (*make)();
    const char* text;
    const char* error;
    const char* valueName = "x";
};

class WrongInputTest : public testing::TestWithParam<WrongRow> {};

TEST_P(WrongInputTest, IsRefusedAndChangesNothing) {
    const std::unique_ptr<values::ValueBase> value(GetParam().make());
    value->SetName(QLatin1String(GetParam().valueName), nullptr);
    const QString before = PlainContent(*value);
    EXPECT_EQ(SetFromText(*value, QString::fromUtf8(GetParam().text)), QString::fromUtf8(GetParam().error));
    EXPECT_EQ(PlainContent(*value), before);
}

INSTANTIATE_TEST_SUITE_P(
    , WrongInputTest,
    testing::Values(
        WrongRow{"NoBoolean", MakeBool, "2", "\"2\" is no boolean: true or false"},
        WrongRow{"NoInteger", MakeInt, "1.5", "\"1.5\" is no whole number"},
        WrongRow{"NothingForAnInteger", MakeInt, "", "\"\" is no whole number"},
        WrongRow{"TooGreat", MakeInt, "2147483648", "2147483648 does not fit into 32 bits"},
        WrongRow{"TooSmall", MakeLimited, "-2147483649", "-2147483649 does not fit into 32 bits"},
        WrongRow{"InfiniteInteger", MakeInt, "inf", "\"inf\" is no whole number"},
        WrongRow{"Infinite", MakeNumber, "inf", "\"inf\" is no number"},
        WrongRow{"InfiniteBelow", MakeNumber, "-Infinity", "\"-Infinity\" is no number"},
        WrongRow{"BeyondEveryNumber", MakeNumber, "1e999", "\"1e999\" is no number"},
        WrongRow{"InfiniteInAList", MakeList, "1,inf", "\"inf\" is no number"},
        WrongRow{"NothingForASelection", MakeSelection, "",
                 "\"\" is none of Idle (0), 5 (3), Scan (4), Five (5), SCAN (6)"},
        WrongRow{"NoHexadecimal", MakeInt, "0xfg", "\"0xfg\" is no whole number"},
        WrongRow{"NoNumber", MakeNumber, "one", "\"one\" is no number"},
        WrongRow{"NotANumber", MakeNumber, "nan", "\"nan\" is no number"},
        WrongRow{"UnitThatIsNotTheValues", MakeNumber, "5 MHz", "\"5 MHz\" is no number"},
        WrongRow{"ForeignUnit", MakeNumber, "5 ms",
                 "\"5 ms\" is no number, alone or with Hz, kHz, MHz, GHz, k, M or G", "Frequency"},
        WrongRow{"ForeignUnitOfAnInteger", MakeInt, "5 kHz",
                 "\"5 kHz\" is no whole number, alone or with us, ms or s", "SweepTime"},
        WrongRow{"NegativeFrequency", MakeNumber, "-5 MHz", "\"-5 MHz\" is negative, which no frequency is",
                 "Frequency"},
        WrongRow{"FrequencyBeyondEveryNumber", MakeNumber, "1e999", "\"1e999\" is too great", "Frequency"},
        WrongRow{"CommaInANumberThatIsNoFrequency", MakeNumber, "1,5", "\"1,5\" is no number"},
        WrongRow{"RequestBelowTheLimits", MakeRequest, "121.5",
                 "\"121.5\" lies outside the limits (300 kHz .. 3000 MHz, every change)", "Frequency"},
        WrongRow{"RequestBeyondTheLimits", MakeRequest, "5 GHz",
                 "\"5 GHz\" lies outside the limits (300 kHz .. 3000 MHz, every change)", "Frequency"},
        WrongRow{"UnitAlone", MakeNumber, "GHz",
                 "\"GHz\" is no number, alone or with Hz, kHz, MHz, GHz, k, M or G", "Frequency"},
        WrongRow{"NoItem", MakeSelection, "Nap",
                 "\"Nap\" is none of Idle (0), 5 (3), Scan (4), Five (5), SCAN (6)"},
        WrongRow{"SeveralItems", MakeSelection, "scan",
                 "\"scan\" is none of Idle (0), 5 (3), Scan (4), Five (5), SCAN (6)"},
        WrongRow{"GapInList", MakeList, "1,,2", "\"\" is no number"}),
    RowName());

TEST(ContentInput, ANodeHasNoContent) {
    values::Node node;
    EXPECT_EQ(SetFromText(node, QStringLiteral("1")), QStringLiteral("is a node, which has no content"));
    EXPECT_FALSE(IsAsAsked(node, QStringLiteral("1")));
}

}  // namespace
