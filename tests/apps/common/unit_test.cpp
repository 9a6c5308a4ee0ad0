// SPDX-License-Identifier: Apache-2.0
#include <apps/common/unit.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

struct UnitRow {
    const char* name;
    const char* key;
    const char* decimal;
    const char* scaled;
    const char* unit;
};

struct UnitRowName {
    template <class Info>
    std::string operator()(const Info& row) const {
        return row.param.name;
    }
};

class UnitTest : public testing::TestWithParam<UnitRow> {};

TEST_P(UnitTest, IsScaledWithoutLoss) {
    const UnitRow& row = GetParam();
    QString unit;
    EXPECT_EQ(Unit::Of(QLatin1String(row.key)).Scaled(QLatin1String(row.decimal), &unit),
              QLatin1String(row.scaled));
    EXPECT_EQ(unit, QLatin1String(row.unit));
}

INSTANTIATE_TEST_SUITE_P(
    , UnitTest,
    testing::Values(UnitRow{"Zero", "Frequency", "0", "0", "Hz"},
                    UnitRow{"Hertz", "Frequency", "999.5", "999.5", "Hz"},
                    UnitRow{"Kilohertz", "Frequency", "1000", "1", "kHz"},
                    UnitRow{"Megahertz", "Frequency", "30000000", "30", "MHz"},
                    UnitRow{"EveryDigit", "Frequency", "123456789.125", "123.456789125", "MHz"},
                    UnitRow{"GreatFrequency", "DefaultFrequencyForChannel", "3000000000", "3000", "MHz"},
                    UnitRow{"JustBelow", "Frequency", "999999", "999.999", "kHz"},
                    UnitRow{"Negative", "Frequency", "-2500", "-2.5", "kHz"},
                    UnitRow{"Fraction", "Frequency", "0.001", "0.001", "Hz"},
                    UnitRow{"WithExponent", "Frequency", "1e+20", "1e+20", "Hz"},
                    UnitRow{"Infinite", "Frequency", "inf", "inf", "Hz"},
                    UnitRow{"Microseconds", "SweepTime", "250", "250", "us"},
                    UnitRow{"Milliseconds", "SweepTime", "2500", "2.5", "ms"},
                    UnitRow{"Seconds", "SweepTime", "10000001", "10.000001", "s"},
                    UnitRow{"PollInterval", "PollInterval", "1500", "1.5", "s"},
                    UnitRow{"NoUnit", "NumberOfFreqChannels", "5000", "5000", ""}),
    UnitRowName());

TEST(Unit, IsKnownByTheWholeNameOnly) {
    EXPECT_TRUE(Unit::Of(QStringLiteral("FrequencyChannels")).IsEmpty());
    EXPECT_TRUE(Unit::Of(QString()).IsEmpty());
    EXPECT_EQ(Unit::Of(QStringLiteral("Frequency")).Name(), QStringLiteral("Hz"));
}

TEST(Unit, OfFrequenciesIsTheirs) {
    EXPECT_TRUE(Unit::Hertz().IsHertz());
    EXPECT_TRUE(Unit::Of(QStringLiteral("DefaultFrequencyForChannel")).IsHertz());
    EXPECT_FALSE(Unit::Of(QStringLiteral("SweepTime")).IsHertz());
    EXPECT_FALSE(Unit::Of(QString()).IsHertz());
    EXPECT_EQ(Unit::Hertz().Name(), QStringLiteral("Hz"));
}

struct TypedRow {
    const char* name;
    const char* key;
    const char* typed;
    const char* number;
};

class TypedUnitTest : public testing::TestWithParam<TypedRow> {};

TEST(Unit, SaysWhatIsTakenOff) {
    EXPECT_EQ(Unit::Of(QStringLiteral("Frequency")).Accepted(),
              QStringLiteral("Hz, kHz, MHz, GHz, k, M or G"));
    EXPECT_EQ(Unit::Of(QStringLiteral("SweepTime")).Accepted(), QStringLiteral("us, ms or s"));
    EXPECT_EQ(Unit::Of(QStringLiteral("Comment")).Accepted(), QString());
}

TEST_P(TypedUnitTest, BecomesANumber) {
    EXPECT_EQ(Unit::Of(QLatin1String(GetParam().key)).WithoutUnit(QString::fromUtf8(GetParam().typed)),
              QLatin1String(GetParam().number));
}

INSTANTIATE_TEST_SUITE_P(, TypedUnitTest,
                         testing::Values(TypedRow{"Megahertz", "Frequency", "98.5MHz", "98.5e6"},
                                         TypedRow{"WithBlank", "Frequency", "98.5 MHz", "98.5e6"},
                                         TypedRow{"Hertz", "Frequency", "5 Hz", "5"},
                                         TypedRow{"Gigahertz", "Frequency", "1 GHz", "1e9"},
                                         TypedRow{"PrefixAlone", "Frequency", "30M", "30e6"},
                                         TypedRow{"InAnyCase", "Frequency", "5 mhz", "5e6"},
                                         TypedRow{"NoMillihertz", "Frequency", "5m", "5m"},
                                         TypedRow{"WithExponent", "Frequency", "1E3 kHz", "1e6"},
                                         TypedRow{"ExponentsThatMeet", "Frequency", "1e-6M", "1"},
                                         TypedRow{"NoExponent", "Frequency", "1ex MHz", "1ex"},
                                         TypedRow{"MicroSign", "SweepTime", "7 \xc2\xb5s", "7"},
                                         TypedRow{"GreekMu", "SweepTime", "7 \xce\xbcs", "7"},
                                         TypedRow{"NoPrefixOfSeconds", "SweepTime", "7m", "7m"},
                                         TypedRow{"Milliseconds", "SweepTime", "10ms", "10e3"},
                                         TypedRow{"Seconds", "SweepTime", "1 s", "1e6"},
                                         TypedRow{"ForeignUnit", "Frequency", "5 ms", "5 ms"},
                                         TypedRow{"NoKnownUnit", "Comment", "5 Hz", "5 Hz"}),
                         UnitRowName());

}  // namespace
