// SPDX-License-Identifier: Apache-2.0
// A data module by itself: its row, its inputs, its assignments in the configuration.
#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>

#include <limits>
#include <ostream>

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

class ADataModule : public DataModuleTest {};

TEST_F(ADataModule, IsARowOfTheTreeWidget) {
    {
        const DataModule module(&m_widget, 4, Text("ADAM-6051"), m_ip, PollInterval(250));
        ASSERT_EQ(m_widget.topLevelItemCount(), 1);
        const QTreeWidgetItem& row = *m_widget.topLevelItem(0);
        EXPECT_EQ(row.text(0), Text("5"));
        EXPECT_EQ(row.text(1), Text("ADAM-6051"));
        EXPECT_EQ(row.text(2), m_ip);
        EXPECT_EQ(row.text(3), Text("250"));
        EXPECT_EQ(row.text(4), Text("Disconnected"));
    }
    EXPECT_EQ(m_widget.topLevelItemCount(), 0);
}

TEST_F(ADataModule, ShowsTheHighestIndexPlusOne) {
    const DataModule module(&m_widget, std::numeric_limits<int>::max());
    EXPECT_EQ(module.text(0), Text("2147483648"));
}

TEST_F(ADataModule, WithoutATypePublishesNothing) {
    const DataModule module(&m_widget, 0);
    EXPECT_EQ(module.GetType(), QString());
    EXPECT_EQ(m_tree.FindNode(Path(""))->CountChildren(), 0);
    EXPECT_FALSE(module.IsConnected());
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(ADataModule, UpdatesItsRowWhenItIsConfigured) {
    DataModule module(&m_widget, 0);
    module.Configure(Text("ADAM-6060"), Text("10.0.0.7"), PollInterval(33));
    EXPECT_EQ(module.text(1), Text("ADAM-6060"));
    EXPECT_EQ(module.text(2), Text("10.0.0.7"));
    EXPECT_EQ(module.text(3), Text("33"));
    EXPECT_EQ(module.GetAddress(), Text("10.0.0.7"));
    EXPECT_EQ(module.GetPollInterval(), std::chrono::milliseconds(33));
    EXPECT_TRUE(WaitUntil([&] { return module.IsConnected(); }));
    EXPECT_EQ(module.text(4), Text("Connected"));
}

struct TypeRow {
    const char* name;
    const char* type;
    int inputs;
};

void PrintTo(const TypeRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const TypeRow typeRows[] = {
    {"TheOneOfTwelve",   "ADAM-6051",   12},
    {"AnotherOne",       "ADAM-6060",   6},
    {"InLowerCase",      "adam-6051",   6},
    {"WithASpace",       "ADAM-6051 ",  6},
    {"WithASuffix",      "ADAM-6051D",  6},
    {"AnyText",          "x",           6},
};
// clang-format on

class AType : public DataModuleTest, public testing::WithParamInterface<TypeRow> {};

TEST_P(AType, HasAFixedNumberOfInputs) {
    const auto module = Make(0, GetParam().type);
    EXPECT_EQ(module->GetNumberOfInputs(), GetParam().inputs);
    module->SetFrequency(GetParam().inputs - 1, First);
    module->SetFrequency(GetParam().inputs, Second);
    EXPECT_EQ(module->GetFrequency(GetParam().inputs - 1), First);
    EXPECT_EQ(module->GetFrequency(GetParam().inputs), 0.0);
    module->Connect();
    EXPECT_TRUE(WaitUntil([&] { return module->IsConnected(); }));
    EXPECT_EQ(m_modules.CountsAsked()[0], GetParam().inputs);
}

INSTANTIATE_TEST_SUITE_P(Table, AType, testing::ValuesIn(typeRows), testing::PrintToStringParamName());

TEST_F(ADataModule, DropsItsAssignmentsWhenItsTypeChanges) {
    const auto module = Make();
    module->SetFrequency(0, First);
    module->Configure(Text("ADAM-6060"), m_ip, PollInterval(1));
    EXPECT_EQ(module->GetFrequency(0), 0.0);
    module->SetFrequency(0, First);
    module->SetType(Text("ADAM-6051"));
    EXPECT_EQ(module->GetFrequency(0), 0.0);
    EXPECT_EQ(module->GetNumberOfInputs(), 12);
}

TEST_F(ADataModule, KeepsItsAssignmentsWhenItsTypeIsSetAgain) {
    const auto module = Make();
    module->SetFrequency(0, First);
    module->Configure(Text("ADAM-6051"), Text("10.0.0.7"), PollInterval(2));
    EXPECT_EQ(module->GetFrequency(0), First);
}

TEST_F(ADataModule, HasNoFrequencyBeyondItsInputs) {
    const auto module = Make();
    for (const int input :
         {-1, 12, 1000000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        module->SetFrequency(input, First);
        EXPECT_EQ(module->GetFrequency(input), 0.0) << input;
    }
}

TEST_F(ADataModule, TakesWhatIsNotFiniteForNoFrequency) {
    const auto module = Make();
    for (const double frequency : {Infinity, -Infinity, std::numeric_limits<double>::quiet_NaN()}) {
        module->SetFrequency(0, First);
        module->SetFrequency(0, frequency);
        EXPECT_EQ(module->GetFrequency(0), 0.0) << frequency;
    }
}

struct StoredRow {
    const char* name;
    const char* text;
    double frequency;
};

void PrintTo(const StoredRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const StoredRow storedRows[] = {
    {"AWholeNumber",     "118100000",            118100000.0},
    {"AFraction",        "118100000.5",          118100000.5},
    {"AnExponent",       "1.181e8",              118100000.0},
    {"Zero",             "0",                    0.0},
    {"ANegativeNumber",  "-118100000",           0.0},
    {"Nothing",          "",                     0.0},
    {"AWord",            "tower",                0.0},
    {"AComma",           "118100000,5",          0.0},
    {"AUnit",            "118 MHz",              0.0},
    {"NotANumber",       "nan",                  0.0},
    {"Infinity",         "inf",                  0.0},
    {"TooMuch",          "1e400",                0.0},
    {"TwoToThe64",       "18446744073709551616", 18446744073709551616.0},
};
// clang-format on

class AStoredFrequency : public DataModuleTest, public testing::WithParamInterface<StoredRow> {};

TEST_P(AStoredFrequency, IsLoadedIfItIsANumberAboveZero) {
    FakeCfg section;
    section.PutSection(Text("Assignments"));
    section.Put(Text("Assignments/AssignmentCount"), Text("12"));
    section.Put(Text("Assignments/DI_3"), Text(GetParam().text));
    const auto module = Make();
    module->SetFrequency(3, Second);
    module->LoadAssignments(section);
    EXPECT_EQ(module->GetFrequency(3), GetParam().frequency);
}

INSTANTIATE_TEST_SUITE_P(Table, AStoredFrequency, testing::ValuesIn(storedRows),
                         testing::PrintToStringParamName());

TEST_F(ADataModule, LoadsNoInputBeyondTheCountOrItsOwn) {
    FakeCfg section;
    section.PutSection(Text("Assignments"));
    for (const int input : {0, 1, 2, 5, 6, 100})
        section.Put(Text("Assignments/DI_%1").arg(input), QString::number(100 + input));
    const auto module = Make(0, "ADAM-6060");
    section.Put(Text("Assignments/AssignmentCount"), Text("2"));
    module->LoadAssignments(section);
    EXPECT_EQ(module->GetFrequency(1), 101.0);
    EXPECT_EQ(module->GetFrequency(2), 0.0);
    section.Put(Text("Assignments/AssignmentCount"), Text("2147483647"));
    section.ClearLog();
    module->LoadAssignments(section);
    EXPECT_EQ(module->GetFrequency(5), 105.0);
    EXPECT_LE(section.Log().size(), 8U);  // and does not go through all of them
    section.Put(Text("Assignments/AssignmentCount"), Text("-1"));
    module->LoadAssignments(section);
    EXPECT_EQ(module->GetFrequency(0), 0.0);
}

TEST_F(ADataModule, WithoutStoredAssignmentsHasNone) {
    FakeCfg section;
    const auto module = Make();
    module->SetFrequency(0, First);
    module->LoadAssignments(section);
    EXPECT_EQ(module->GetFrequency(0), 0.0);
    EXPECT_EQ(section.OpenSections(), 0);
}

TEST_F(ADataModule, StoresItsAssignmentsAsWholeHertz) {
    FakeCfg section;
    const auto module = Make(0, "ADAM-6060");
    module->SetFrequency(0, 100000000.6);
    module->SetFrequency(1, 100000000.4);
    module->SetFrequency(2, 1e22);
    module->SetFrequency(3, -5.0);
    module->SaveAssignments(section);
    EXPECT_EQ(
        section.Log(),
        (std::vector<QString>{
            Text("ProvideSection Assignments"), Text("WriteInt Assignments/AssignmentCount 6"),
            Text("WriteString Assignments/DI_0 100000001"), Text("WriteString Assignments/DI_1 100000000"),
            Text("WriteString Assignments/DI_2 10000000000000000000000"),
            Text("WriteString Assignments/DI_3 -5"), Text("WriteString Assignments/DI_4 0"),
            Text("WriteString Assignments/DI_5 0")}));
    EXPECT_EQ(section.OpenSections(), 0);
}

TEST_F(ADataModule, LoadsWhatItStored) {
    FakeCfg section;
    const auto module = Make();
    module->SetFrequency(11, First);
    module->SaveAssignments(section);
    const auto other = Make(1);
    other->LoadAssignments(section);
    EXPECT_EQ(other->GetFrequency(11), First);
    EXPECT_EQ(other->GetFrequency(0), 0.0);
}

}  // namespace
