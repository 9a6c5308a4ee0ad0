// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/gtsconfig.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <ostream>

namespace {

using treeaccess::Text;

void PutModule(FakeCfg& cfg, int number, const char* index, const char* type, const char* address,
               const char* interval) {
    const QString section = Text("Module%1").arg(number);
    cfg.PutSection(section);
    const auto put = [&](const char* key, const char* content) {
        if (content != nullptr) cfg.Put(section + Text("/") + Text(key), Text(content));
    };
    put("Index", index);
    put("Name", type);
    put("Address", address);
    put("PollInterval", interval);
}

struct EntryRow {
    const char* name;
    const char* index;  ///< null: the key is missing
    const char* type;
    const char* address;
    const char* interval;
    bool isLoaded;
};

void PrintTo(const EntryRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const EntryRow entryRows[] = {
    {"Complete",               "0",          "ADAM-6051", "10.0.0.1",  "10",          true},
    {"TheHighestIndex",        "2147483647", "ADAM-6051", "10.0.0.1",  "10",          true},
    {"TheShortestInterval",    "0",          "ADAM-6051", "10.0.0.1",  "1",           true},
    {"TheLongestInterval",     "0",          "ADAM-6051", "10.0.0.1",  "2147483647",  true},
    {"AnAddressThatIsNone",    "0",          "ADAM-6051", "nonsense",  "10",          true},
    {"NoIndex",                nullptr,      "ADAM-6051", "10.0.0.1",  "10",          false},
    {"ANegativeIndex",         "-1",         "ADAM-6051", "10.0.0.1",  "10",          false},
    {"TheLowestIndex",         "-2147483648","ADAM-6051", "10.0.0.1",  "10",          false},
    {"NoName",                 "0",          nullptr,     "10.0.0.1",  "10",          false},
    {"AnEmptyName",            "0",          "",          "10.0.0.1",  "10",          false},
    {"NoAddress",              "0",          "ADAM-6051", nullptr,     "10",          false},
    {"AnEmptyAddress",         "0",          "ADAM-6051", "",          "10",          false},
    {"NoInterval",             "0",          "ADAM-6051", "10.0.0.1",  nullptr,       false},
    {"AnIntervalOfZero",       "0",          "ADAM-6051", "10.0.0.1",  "0",           false},
    {"ANegativeInterval",      "0",          "ADAM-6051", "10.0.0.1",  "-100",        false},
    {"AnIntervalThatIsNone",   "0",          "ADAM-6051", "10.0.0.1",  "99999999999", false},
};
// clang-format on

class AnEntry : public testing::TestWithParam<EntryRow> {};

TEST_P(AnEntry, IsLoadedIfItIsCompleteAndSkippedSilentlyIfNot) {
    const EntryRow& row = GetParam();
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("1"));
    PutModule(cfg, 0, row.index, row.type, row.address, row.interval);
    const TraceRecorder traces;
    const std::vector<gtsconfig::Entry> entries = gtsconfig::Load(cfg);
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
    EXPECT_EQ(cfg.OpenSections(), 0);
    ASSERT_EQ(entries.size(), row.isLoaded ? 1U : 0U);
    if (!row.isLoaded) return;
    EXPECT_EQ(entries[0].settings.index, Text(row.index).toInt());
    EXPECT_EQ(entries[0].settings.type, Text(row.type));
    EXPECT_EQ(entries[0].settings.address, Text(row.address));
    EXPECT_EQ(entries[0].settings.pollInterval, std::chrono::milliseconds(Text(row.interval).toInt()));
    EXPECT_EQ(entries[0].section, Text("Module0"));
}

INSTANTIATE_TEST_SUITE_P(Table, AnEntry, testing::ValuesIn(entryRows), testing::PrintToStringParamName());

std::vector<int> IndexesOf(const std::vector<gtsconfig::Entry>& entries) {
    std::vector<int> indexes;
    for (const gtsconfig::Entry& entry : entries)
        indexes.push_back(entry.settings.index);
    return indexes;
}

TEST(AListOfModules, KeepsItsOrderWithoutThoseThatAreMissing) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("5"));
    PutModule(cfg, 3, "1", "x", "10.0.0.1", "10");
    PutModule(cfg, 1, "7", "x", "10.0.0.1", "10");
    PutModule(cfg, 5, "9", "x", "10.0.0.1", "10");  // beyond the count
    EXPECT_EQ(IndexesOf(gtsconfig::Load(cfg)), (std::vector<int>{7, 1}));
}

TEST(AListOfModules, LetsModulesOfDifferentTypesShareAnIndex) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("3"));
    PutModule(cfg, 0, "4", "x", "10.0.0.1", "10");
    PutModule(cfg, 1, "4", "y", "10.0.0.1", "10");
    PutModule(cfg, 2, "4", "X", "10.0.0.1", "10");
    const TraceRecorder traces;
    EXPECT_EQ(IndexesOf(gtsconfig::Load(cfg)), (std::vector<int>{4, 4, 4}));
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

TEST(AListOfModules, TellsTypesApartThatHaveTheSameNode) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("2"));
    PutModule(cfg, 0, "4", "a/b", "10.0.0.1", "10");
    PutModule(cfg, 1, "4", "a_b", "10.0.0.1", "10");
    EXPECT_EQ(IndexesOf(gtsconfig::Load(cfg)), (std::vector<int>{4, 0}));
}

TEST(AListOfModules, GivesADoubledIndexAPlaceThatNobodyHas) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("5"));
    int number = 0;
    for (const char* const index : {"1", "1", "0", "1", "2"})
        PutModule(cfg, number++, index, "x", "10.0.0.1", "10");
    const TraceRecorder traces;
    EXPECT_EQ(IndexesOf(gtsconfig::Load(cfg)), (std::vector<int>{1, 3, 0, 4, 2}));
    EXPECT_EQ(traces.Messages(),
              (std::vector<QString>{
                  Text("Configuration: GTS/Module1 has the index 1 of another module; 3 is used"),
                  Text("Configuration: GTS/Module3 has the index 1 of another module; 4 is used")}));
}

TEST(AListOfModules, IsNotLongerThanIsReasonable) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("2147483647"));
    for (const int number : {0, 65535, 65536})
        PutModule(cfg, number, qPrintable(QString::number(number)), "x", "10.0.0.1", "10");
    const TraceRecorder traces;
    EXPECT_EQ(IndexesOf(gtsconfig::Load(cfg)), (std::vector<int>{0, 65535}));
    EXPECT_EQ(traces.Messages(),
              std::vector<QString>{
                  Text("Configuration: GTS/ModuleCount is 2147483647; the first 65536 modules are used")});
}

TEST(AListOfModules, OfANegativeLengthIsEmpty) {
    FakeCfg cfg;
    cfg.Put(Text("ModuleCount"), Text("-1"));
    PutModule(cfg, 0, "0", "x", "10.0.0.1", "10");
    EXPECT_EQ(gtsconfig::Load(cfg).size(), 0U);
}

TEST(AListOfModules, IsSavedEmptyAndCommitted) {
    FakeCfg cfg;
    std::set<QString> own;
    gtsconfig::Save(cfg, {}, &own);
    EXPECT_EQ(cfg.Log(), (std::vector<QString>{Text("ReadInt ModuleCount 0"), Text("WriteInt ModuleCount 0"),
                                               Text("CommitKey ModuleCount")}));
    EXPECT_EQ(cfg.OpenSections(), 0);
}

TEST(AFreeIndex, IsTheLowest) {
    EXPECT_EQ(gtsconfig::LowestFreeIndex({}), 0);
    EXPECT_EQ(gtsconfig::LowestFreeIndex({1}), 0);
    EXPECT_EQ(gtsconfig::LowestFreeIndex({2, 0, 1}), 3);
    EXPECT_EQ(gtsconfig::LowestFreeIndex({0, 2, 0}), 1);
    EXPECT_EQ(gtsconfig::LowestFreeIndex({2147483647, 0}), 1);
}

}  // namespace
