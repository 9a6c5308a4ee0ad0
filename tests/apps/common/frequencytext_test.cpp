// SPDX-License-Identifier: Apache-2.0
#include <apps/common/frequencytext.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>

namespace {

using EPlain = FrequencyText::EPlainNumber;
using EProblem = FrequencyText::EProblem;

struct FrequencyRow {
    const char* name;
    const char* text;
    double hz;         ///< where plain numbers count hertz
    double consoleHz;  ///< where small ones count MHz
};

struct NoFrequencyRow {
    const char* name;
    const char* text;
    EProblem problem;
};

struct FrequencyRowName {
    template <class Info>
    std::string operator()(const Info& row) const {
        return row.param.name;
    }
};

class FrequencyTextTest : public testing::TestWithParam<FrequencyRow> {};
class NoFrequencyTextTest : public testing::TestWithParam<NoFrequencyRow> {};

TEST_P(FrequencyTextTest, IsRead) {
    const QString text = QString::fromUtf8(GetParam().text);
    const FrequencyText plain(text, EPlain::Hertz);
    EXPECT_EQ(plain.GetProblem(), EProblem::None);
    EXPECT_EQ(plain.GetHz(), GetParam().hz);
    const FrequencyText console(text, EPlain::MegahertzOrHertz);
    EXPECT_EQ(console.GetProblem(), EProblem::None);
    EXPECT_EQ(console.GetHz(), GetParam().consoleHz);
}

INSTANTIATE_TEST_SUITE_P(
    , FrequencyTextTest,
    testing::Values(
        FrequencyRow{"WithKilohertz", "118400 kHz", 118.4e6, 118.4e6},
        FrequencyRow{"WithKilohertzAndNoBlank", "118400kHz", 118.4e6, 118.4e6},
        FrequencyRow{"WithHertz", "5 Hz", 5, 5}, FrequencyRow{"WithMegahertz", "121.5 MHz", 121.5e6, 121.5e6},
        FrequencyRow{"WithGigahertz", "1.2 GHz", 1.2e9, 1.2e9}, FrequencyRow{"WithKilo", "500k", 5e5, 5e5},
        FrequencyRow{"WithMega", "98.5M", 98.5e6, 98.5e6}, FrequencyRow{"WithGiga", "1 G", 1e9, 1e9},
        FrequencyRow{"UnitInAnyCase", "121.5 mhz", 121.5e6, 121.5e6},
        FrequencyRow{"LongPlain", "121500000", 121.5e6, 121.5e6},
        FrequencyRow{"ShortPlain", "121.5", 121.5, 121.5e6},
        FrequencyRow{"PlainOfFourDigits", "5000", 5000, 5e9},
        FrequencyRow{"GreatestPlainMegahertz", "30000", 30000, 30e9},
        FrequencyRow{"LeastPlainHertz", "30001", 30001, 30001},
        FrequencyRow{"JustAboveTheBorder", "30000.5", 30000.5, 30001}, FrequencyRow{"PlainNought", "0", 0, 0},
        FrequencyRow{"Comma", "121,5 MHz", 121.5e6, 121.5e6},
        FrequencyRow{"PlainWithComma", "121,5", 121.5, 121.5e6},
        FrequencyRow{"GroupedByBlanks", "121 500 000 Hz", 121.5e6, 121.5e6},
        FrequencyRow{"PlainGroupedByBlanks", "121 500 000", 121.5e6, 121.5e6},
        FrequencyRow{"GroupedByNarrowBlanks",
                     "118\xe2\x80\xaf"
                     "400 kHz",
                     118.4e6, 118.4e6},
        FrequencyRow{"GroupedByBlanksThatDoNotBreak",
                     "118\xc2\xa0"
                     "400\xc2\xa0kHz",
                     118.4e6, 118.4e6},
        FrequencyRow{"GroupedFraction", "121.500 025 MHz", 121500025, 121500025},
        FrequencyRow{"Exponent", "1.215e8 Hz", 121.5e6, 121.5e6},
        FrequencyRow{"PlainWithExponent", "1.2e2", 120, 120e6},
        FrequencyRow{"PlainWithGreatExponent", "1,215E+8", 121.5e6, 121.5e6},
        FrequencyRow{"ExponentAndUnit", "1.215e5 kHz", 121.5e6, 121.5e6},
        FrequencyRow{"NegativeExponent", "1215e-1 MHz", 121.5e6, 121.5e6},
        FrequencyRow{"Plus", "+121.5 MHz", 121.5e6, 121.5e6},
        FrequencyRow{"NothingBeforeThePoint", ".5 MHz", 5e5, 5e5},
        FrequencyRow{"NothingBehindThePoint", "121.", 121, 121e6},
        FrequencyRow{"BlanksAround", "  98.7 MHz\t", 98.7e6, 98.7e6},
        FrequencyRow{"FractionOfAHertz", "0.25 Hz", 0.25, 0},
        FrequencyRow{"AlmostAnotherHertz", "121.4999996 MHz", 121499999.6, 121500000},
        FrequencyRow{"EveryDigit", "123.456789125 MHz", 123456789.125, 123456789}),
    FrequencyRowName());

TEST_P(NoFrequencyTextTest, IsRefused) {
    for (const EPlain plain : {EPlain::Hertz, EPlain::MegahertzOrHertz}) {
        const FrequencyText frequency(QString::fromUtf8(GetParam().text), plain);
        EXPECT_EQ(frequency.GetProblem(), GetParam().problem);
        EXPECT_FALSE(frequency.IsFrequency());
        EXPECT_EQ(frequency.GetHz(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    , NoFrequencyTextTest,
    testing::Values(NoFrequencyRow{"Nothing", "", EProblem::Empty},
                    NoFrequencyRow{"Blanks", "  ", EProblem::Empty},
                    NoFrequencyRow{"Letters", "abc", EProblem::NoFrequency},
                    NoFrequencyRow{"UnitAlone", "MHz", EProblem::NoFrequency},
                    NoFrequencyRow{"PrefixAlone", "k", EProblem::NoFrequency},
                    NoFrequencyRow{"PointAlone", ".", EProblem::NoFrequency},
                    NoFrequencyRow{"ForeignUnit", "5 ms", EProblem::NoFrequency},
                    NoFrequencyRow{"Millihertz", "121.5m", EProblem::NoFrequency},
                    NoFrequencyRow{"TwoUnits", "5 MHz MHz", EProblem::NoFrequency},
                    NoFrequencyRow{"TwoPoints", "121.500.000", EProblem::NoFrequency},
                    NoFrequencyRow{"PointAndComma", "1,234.5", EProblem::NoFrequency},
                    NoFrequencyRow{"BlankAmongDigits", "12 15", EProblem::NoFrequency},
                    NoFrequencyRow{"GroupsOfOtherLengths", "1215 000 000", EProblem::NoFrequency},
                    NoFrequencyRow{"BlankBehindThePoint", "121. 5", EProblem::NoFrequency},
                    NoFrequencyRow{"TwoNumbers", "121.5 122.5", EProblem::NoFrequency},
                    NoFrequencyRow{"ExponentWithoutDigits", "1.2e", EProblem::NoFrequency},
                    NoFrequencyRow{"BlankInAnExponent", "1.2e 2", EProblem::NoFrequency},
                    NoFrequencyRow{"Hexadecimal", "0x10", EProblem::NoFrequency},
                    NoFrequencyRow{"NotANumber", "nan", EProblem::NoFrequency},
                    NoFrequencyRow{"Infinite", "inf", EProblem::NoFrequency},
                    NoFrequencyRow{"InfiniteHertz", "Infinity Hz", EProblem::NoFrequency},
                    NoFrequencyRow{"DigitsOfAnotherScript", "\xd9\xa1\xd9\xa2\xd9\xa1",
                                   EProblem::NoFrequency},
                    NoFrequencyRow{"Negative", "-121.5 MHz", EProblem::Negative},
                    NoFrequencyRow{"NegativeNought", "-0", EProblem::Negative},
                    NoFrequencyRow{"Overflow", "1e999", EProblem::TooGreat},
                    NoFrequencyRow{"OverflowByTheUnit", "1e306 GHz", EProblem::TooGreat},
                    NoFrequencyRow{"OverflowOfTheExponentItself", "1e5000 MHz", EProblem::TooGreat}),
    FrequencyRowName());

TEST(FrequencyText, TakesNoTextWithoutEnd) {
    EXPECT_EQ(FrequencyText(QString(1000000, QLatin1Char('1')), EPlain::Hertz).GetProblem(),
              EProblem::NoFrequency);
}

struct MegahertzRow {
    const char* name;
    double hz;
    const char* text;
};

class MegahertzTest : public testing::TestWithParam<MegahertzRow> {};

TEST_P(MegahertzTest, IsShown) {
    EXPECT_EQ(FrequencyText::InMegahertz(GetParam().hz), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(, MegahertzTest,
                         testing::Values(MegahertzRow{"Whole", 121e6, "121.000"},
                                         MegahertzRow{"OneDigit", 121.5e6, "121.500"},
                                         MegahertzRow{"Channel", 118008333, "118.008333"},
                                         MegahertzRow{"FractionOfAHertz", 123456789.125, "123.456789125"},
                                         MegahertzRow{"LessThanOne", 300000, "0.300"},
                                         MegahertzRow{"Nought", 0, "0.000"},
                                         MegahertzRow{"Great", 3e9, "3000.000"}),
                         FrequencyRowName());

TEST(FrequencyText, IsShownWithoutDecimalsWhereNoneAreAskedFor) {
    EXPECT_EQ(FrequencyText::InMegahertz(3e9, 0), QStringLiteral("3000"));
    EXPECT_EQ(FrequencyText::InMegahertz(3e5, 0), QStringLiteral("0.3"));
}

TEST(FrequencyText, IsShownAsTheLocaleWritesNumbers) {
    QLocale::setDefault(QLocale(QStringLiteral("de")));
    EXPECT_EQ(FrequencyText::InMegahertz(121.5e6), QStringLiteral("121,500"));
    QLocale::setDefault(QLocale::c());
}

}  // namespace
