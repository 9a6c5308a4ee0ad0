// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace {

using treeaccess::Text;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

struct FrequencyRow {
    const char* name;
    double hz;
    const char* text;
};

void PrintTo(const FrequencyRow& row, std::ostream* stream) {
    *stream << row.name;
}

class FormattingAFrequency : public testing::TestWithParam<FrequencyRow> {};

TEST_P(FormattingAFrequency, GivesAShortTextWithAUnit) {
    EXPECT_EQ(MCSTools::FormatFrequency(GetParam().hz), Text(GetParam().text));
}

const FrequencyRow frequencies[] = {
    {"Zero", 0.0, "0 Hz"},
    {"BelowOneKiloHertz", 999.5, "999.5 Hz"},
    {"JustBelowOneKiloHertz", 999.9999999, "1000 Hz"},
    {"OneKiloHertz", 1000.0, "1 kHz"},
    {"KiloHertz", 2500.0, "2.5 kHz"},
    {"BelowOneMegaHertz", 999999.0, "999.999 kHz"},
    {"JustBelowOneMegaHertz", 999999.9, "1000 kHz"},
    {"OneMegaHertz", 1000000.0, "1 MHz"},
    {"SixDigits", 1234567.0, "1.23457 MHz"},
    {"MegaHertz", 30000000.0, "30 MHz"},
    {"GigaHertz", 3000000000.0, "3000 MHz"},
    {"Exponent", 3e12, "3e+06 MHz"},
    {"SmallExponent", 0.00001, "1e-05 Hz"},
    {"Negative", -5.0, "-5 Hz"},
    {"LargeNegative", -2000000.0, "-2e+06 Hz"},
    {"NaN", NaN, "nan MHz"},
    {"Infinity", Infinity, "inf MHz"},
    {"NegativeInfinity", -Infinity, "-inf Hz"},
};

INSTANTIATE_TEST_SUITE_P(Table, FormattingAFrequency, testing::ValuesIn(frequencies),
                         testing::PrintToStringParamName());

struct RangeRow {
    const char* name;
    double from;
    double to;
    const char* text;
};

void PrintTo(const RangeRow& row, std::ostream* stream) {
    *stream << row.name;
}

class FormattingARange : public testing::TestWithParam<RangeRow> {};

TEST_P(FormattingARange, GivesOneUnitWhereTheEndsShareIt) {
    EXPECT_EQ(MCSTools::FormatFrequencyRange(GetParam().from, GetParam().to), Text(GetParam().text));
}

const RangeRow ranges[] = {
    {"EqualEnds", 2000.0, 2000.0, "2 kHz"},
    {"EqualInfinities", Infinity, Infinity, "inf MHz"},
    {"Hertz", 0.0, 999.0, "0 - 999 Hz"},
    {"NegativeHertz", -5000.0, 10.0, "-5000 - 10 Hz"},
    {"KiloHertz", 1000.0, 999999.0, "1 - 999.999 kHz"},
    {"KiloHertzFromItsLowest", 1000.0, 1001.0, "1 - 1.001 kHz"},
    {"MegaHertz", 30000000.0, 88000000.0, "30 - 88 MHz"},
    {"MegaHertzFromItsLowest", 1000000.0, 1500000.0, "1 - 1.5 MHz"},
    {"MegaHertzWithoutEnd", 1000000.0, Infinity, "1 - inf MHz"},
    {"HertzToKiloHertz", 500.0, 2000.0, "500 Hz - 2 kHz"},
    {"HertzToTheLowestKiloHertz", 999.0, 1000.0, "999 Hz - 1 kHz"},
    {"KiloHertzToMegaHertz", 999999.0, 1000000.0, "999.999 kHz - 1 MHz"},
    {"HertzToMegaHertz", 1.0, 2000000.0, "1 Hz - 2 MHz"},
    {"Descending", 88000000.0, 30000000.0, "88 - 30 MHz"},
    {"DescendingOverUnits", 1000000.0, 999999.0, "1 MHz - 999.999 kHz"},
    {"DescendingHertz", 20.0, 10.0, "20 - 10 Hz"},
    {"FromNaN", NaN, 5.0, "nan MHz - 5 Hz"},
    {"ToNaN", 5000.0, NaN, "5 kHz - nan MHz"},
    {"NaNs", NaN, NaN, "nan MHz - nan MHz"},
};

INSTANTIATE_TEST_SUITE_P(Table, FormattingARange, testing::ValuesIn(ranges),
                         testing::PrintToStringParamName());

/// Records what is looked up, and answers with a text of its own.
class RecordingTranslator final : public QTranslator {
  public:
    RecordingTranslator() { QCoreApplication::installTranslator(this); }
    ~RecordingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* disambiguation,
                      int n) const override {
        lookups.push_back(Lookup{context, text, disambiguation == nullptr, n});
        return Text("<") + Text(text) + Text(">");
    }

    struct Lookup {
        std::string context;
        std::string text;
        bool isPlain;
        int n;
    };
    mutable std::vector<Lookup> lookups;
};

struct TranslationRow {
    const char* name;
    double from;
    double to;
    std::vector<std::string> lookups;
    const char* result;
};

void PrintTo(const TranslationRow& row, std::ostream* stream) {
    *stream << row.name;
}

class TranslatingARange : public testing::TestWithParam<TranslationRow> {};

TEST_P(TranslatingARange, LooksTheUnitTextsUpInTheirContext) {
    const RecordingTranslator translator;
    EXPECT_EQ(MCSTools::FormatFrequencyRange(GetParam().from, GetParam().to), Text(GetParam().result));
    std::vector<std::string> texts;
    for (const RecordingTranslator::Lookup& lookup : translator.lookups) {
        EXPECT_EQ(lookup.context, "MCSTools");
        EXPECT_TRUE(lookup.isPlain);
        EXPECT_EQ(lookup.n, -1);
        texts.push_back(lookup.text);
    }
    EXPECT_EQ(texts, GetParam().lookups);
}

const TranslationRow translations[] = {
    {"OneInHertz", 5, 5, {"%1 Hz"}, "<5 Hz>"},
    {"OneInKiloHertz", 5e3, 5e3, {"%1 kHz"}, "<5 kHz>"},
    {"OneInMegaHertz", 5e6, 5e6, {"%1 MHz"}, "<5 MHz>"},
    {"Hertz", 5, 6, {"%1 - %2 Hz"}, "<5 - 6 Hz>"},
    {"KiloHertz", 5e3, 6e3, {"%1 - %2 kHz"}, "<5 - 6 kHz>"},
    {"MegaHertz", 5e6, 6e6, {"%1 - %2 MHz"}, "<5 - 6 MHz>"},
    {"BothEnds", 5, 6e6, {"%1 Hz", "%1 MHz"}, "<5 Hz> - <6 MHz>"},
};

INSTANTIATE_TEST_SUITE_P(Table, TranslatingARange, testing::ValuesIn(translations),
                         testing::PrintToStringParamName());

TEST(MCSTools, NumbersAreThoseOfNoLanguage) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(MCSTools::FormatFrequency(2500.0), Text("2.5 kHz"));
    QLocale::setDefault(before);
}

TEST(MCSTools, OperationModesReadAsTheDeviceNamesThem) {
    const values::ValueDescriptor& modes = StdDeviceDefinition::g_vdOperationMode;
    for (int i = 0; i < modes.CountSelItems(); ++i)
        EXPECT_EQ(MCSTools::OperationModeAsString(static_cast<EOperationMode>(modes.SelItems()[i].Key())),
                  modes.SelItems()[i].String());
    EXPECT_EQ(MCSTools::OperationModeAsString(OperationIdle), Text("Idle"));
    EXPECT_EQ(MCSTools::OperationModeAsString(OperationMemoryScan), Text("Memory Scan"));
}

TEST(MCSTools, AnUnknownOperationModeIsAnEmptyText) {
    for (const int mode : {-1, 8, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(MCSTools::OperationModeAsString(static_cast<EOperationMode>(mode)), QString()) << mode;
}

TEST(MCSTools, OperationModesAreNotTranslated) {
    const RecordingTranslator translator;
    EXPECT_EQ(MCSTools::OperationModeAsString(OperationScan), Text("Scan"));
    EXPECT_TRUE(translator.lookups.empty());
}

}  // namespace
