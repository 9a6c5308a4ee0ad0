// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/configwatch.h>
#include <apps/mcserver/suppression/configfaults.h>
#include <apps/mcserver/suppression/sectionaudit.h>

#include <platform/config/cfgcenter.h>

#include <tests/apps/mcserver/serverfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A section without a fault, in lines as people write them.
const char WholeModule[] =
    "Module0\\Index=0\nModule0\\Name=ADAM-6051\nModule0\\Address=10.0.0.20\nModule0\\PollInterval=100\n"
    "Module0\\Assignments\\AssignmentCount=12\nModule0\\Assignments\\DI_0=121500000\n"
    "Module0\\Label=Tower mast\nModule0\\Labels\\DI_0=Tower 1\n";

class ConfigFaultsTest : public ServerTest {
  protected:
    /// What a server says of \a ini when it starts, without what is common to all.
    QStringList FaultsOf(const QByteArray& ini) {
        Configure(ini);
        QString error;
        EXPECT_TRUE(CfgCenter::Instance().HoldStore(&error)) << error.toStdString();
        Start(false);
        TakeLog();
        configfaults::TellAll(m_server->GetLog());
        QStringList faults = TakeLog();
        faults.replaceInStrings(QStringLiteral("GTS in the configuration: "), QString());
        return faults;
    }
    QStringList CopiesKept() const {
        return QDir(m_directory.path()).entryList({QStringLiteral("*.damaged-*")});
    }
};

struct FaultRow {
    const char* name;
    QByteArray lines;
    std::vector<const char*> faults;  ///< none: nothing is to be said
};

void PrintTo(const FaultRow& row, std::ostream* stream) {
    *stream << row.name;
}

/// The whole module with \a before written otherwise.
QByteArray With(const char* before, const char* after, const char* count = "ModuleCount=1\n") {
    return QByteArray(WholeModule).replace(before, after) + count;
}

constexpr char CountLine[] = "AssignmentCount=12";
constexpr char FrequencyLine[] = "DI_0=121500000";

// clang-format off
const std::vector<FaultRow> faultRows = {
    {"AWholeSection", With("", ""), {}},
    {"NoSection", "", {}},
    {"NoModuleAtAll", "ModuleCount=0\n", {}},
    {"AnInputWithoutAFrequency", With(FrequencyLine, "DI_0=0\nModule0\\Assignments\\DI_1=\n"), {}},
    {"WhatAModuleWithMoreInputsLeft",
     With("ADAM-6051", "ADAM-6060").replace(CountLine, "AssignmentCount=6\nModule0\\Assignments\\DI_9=1000000"), {}},
    {"NoModuleCount", With("", "", ""),
     {"ModuleCount is missing, so these are not read and nothing of them is supervised: Module0"}},
    {"ASmallModuleCount", With("", "", "ModuleCount=1\nModule1\\Index=1\nModule3\\Index=1\n"),
     {"ModuleCount is '1', so these are not read and nothing of them is supervised: Module1, Module3"}},
    {"AModuleCountThatIsNone", With("", "", "ModuleCount=one\n"),
     {"ModuleCount is 'one', so these are not read and nothing of them is supervised: Module0"}},
    {"AModuleCountAlone", "ModuleCount=2 modules\n", {"ModuleCount is '2 modules', so no data module is read"}},
    {"ALargeModuleCount", With("", "", "ModuleCount=3\n"), {"ModuleCount is '3', and nothing is there of: Module1, Module2"}},
    {"NoPollInterval", With("Module0\\PollInterval=100\n", ""),
     {"Module0 is left out and nothing of it is supervised: its PollInterval is missing"}},
    {"APollIntervalThatIsNone", With("PollInterval=100", "PollInterval=100 ms"),
     {"Module0 is left out and nothing of it is supervised: its PollInterval is '100 ms'"}},
    {"NoAddress", With("10.0.0.20", ""), {"Module0 is left out and nothing of it is supervised: its Address is ''"}},
    {"ANegativeIndex", With("Index=0", "Index=-1"), {"Module0 is left out and nothing of it is supervised: its Index is '-1'"}},
    {"NoAssignmentCount", With("Module0\\Assignments\\AssignmentCount=12\n", ""),
     {"AssignmentCount of Module0 is missing, and it has 12 inputs; these are not read and not supervised: DI_0"}},
    {"ASmallAssignmentCount", With(CountLine, "AssignmentCount=1\nModule0\\Assignments\\DI_1=0\nModule0\\Assignments\\DI_2=1000000"),
     {"AssignmentCount of Module0 is '1', and it has 12 inputs; these are not read and not supervised: DI_2"}},
    {"AnInputThatIsNotThere", With(CountLine, "AssignmentCount=13\nModule0\\Assignments\\DI_12=1000000"),
     {"AssignmentCount of Module0 is '13', and it has 12 inputs; these are not read and not supervised: DI_12"}},
    {"Megahertz", With(FrequencyLine, "DI_0=121.5"),
     {"Module0/Assignments/DI_0 is '121.5', which are no whole hertz; taken is: 121.5 Hz"}},
    {"AUnit", With(FrequencyLine, "DI_0=121.5 MHz"),
     {"Module0/Assignments/DI_0 is '121.5 MHz', which are no whole hertz; taken is: nothing"}},
    {"ANegativeFrequency", With(FrequencyLine, "DI_0=-121500000"),
     {"Module0/Assignments/DI_0 is '-121500000', which are no whole hertz; taken is: nothing"}},
    {"NoFiniteFrequency", With(FrequencyLine, "DI_0=inf"),
     {"Module0/Assignments/DI_0 is 'inf', which are no whole hertz; taken is: nothing"}},
    {"WhatMegahertzBecameOnce", With(FrequencyLine, "DI_0=122"),
     {"Module0/Assignments/DI_0 is 122 Hz, to which nobody can be tuned"}},
    {"AnIndexTwice", With("", "", "ModuleCount=2\n") + With("", "", "").replace("Module0", "Module1"),
     {"Module1 has the index 0 of another module; 1 is used"}},
    {"WhatWasPutAside", With("", "", "ModuleCount=1\nNotLoaded\\Module1\\Index=0\nNotLoaded\\Module1\\Name=x\n"),
     {"what could not be used once is kept below NotLoaded, and not supervised: Module1"}},
    {"MistypedKeys", With("", "", "ModuleCount=1\nmodulecount=2\nModule0\\Asignments\\DI_1=1\nModule01\\Index=0\n"),
     {"these keys are not known and not read: Module0/Asignments/DI_1, Module01/Index, modulecount"}},
    {"AnUnusableModuleBeforeAnother", With("Module0\\Address=10.0.0.20\n", "", "ModuleCount=2\n") +
         With(FrequencyLine, "DI_0=x", "").replace("Module0", "Module1"),
     {"Module0 is left out and nothing of it is supervised: its Address is missing",
      "Module1/Assignments/DI_0 is 'x', which are no whole hertz; taken is: nothing"}},
};
// clang-format on

class ASection : public ConfigFaultsTest, public testing::WithParamInterface<FaultRow> {};

TEST_P(ASection, IsToldOfWhatIsNotTakenAsItStands) {
    const FaultRow& row = GetParam();
    const QByteArray title = row.lines.isEmpty() ? QByteArray() : QByteArray("[GTS]\n");
    QStringList faults = FaultsOf(title + row.lines);
    const QStringList copies = faults.filter(QStringLiteral("a copy of the configuration file"));
    for (const QString& copy : copies)
        faults.removeAll(copy);
    QStringList expected;
    for (const char* const fault : row.faults)
        expected << QString::fromUtf8(fault);
    EXPECT_EQ(faults, expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ASection, testing::ValuesIn(faultRows), testing::PrintToStringParamName());

TEST_F(ConfigFaultsTest, AreAlarmsAmongTheEventsWhereTransmittersAreNotSupervised) {
    FaultsOf("[GTS]\n" + With("", "", ""));
    const QString event = m_server->GetLog().GetJournal().GetEntries().back().json;
    EXPECT_THAT(event.toStdString(), HasSubstr("\"section-modules-uncounted\""));
    EXPECT_THAT(event.toStdString(), HasSubstr("\"alarm\""));
    EXPECT_THAT(event.toStdString(), HasSubstr("\"suppression\""));
}

TEST_F(ConfigFaultsTest, AreNotMoreThanPeopleRead) {
    QByteArray lines = "[GTS]\n" + With("", "", "ModuleCount=100\n");
    for (int i = 1; i < 100; ++i)
        lines += "Module" + QByteArray::number(i) + "\\Index=x\n";
    const QStringList faults = FaultsOf(lines);
    ASSERT_THAT(faults, SizeIs(static_cast<int>(SectionAudit::MaxFaults) + 1));
    EXPECT_EQ(faults.last(), QStringLiteral("further faults: 83"));
}

TEST_F(ConfigFaultsTest, KeepACopyOfWhatTheNextSaveWritesOver) {
    const QStringList faults = FaultsOf("[GTS]\n" + With(CountLine, "Other=1"));
    ASSERT_THAT(CopiesKept(), SizeIs(1));
    EXPECT_THAT(faults.last().toStdString(), HasSubstr(CopiesKept()[0].toStdString()));
    QFile copy(m_directory.filePath(CopiesKept()[0]));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_TRUE(copy.readAll().contains("DI_0=121500000"));
}

TEST_F(ConfigFaultsTest, KeepNoCopyOfWhatStays) {
    FaultsOf("[GTS]\n" + With("", "", ""));
    EXPECT_THAT(CopiesKept(), IsEmpty());
}

TEST_F(ConfigFaultsTest, TellOfASectionInOtherLetters) {
    EXPECT_THAT(FaultsOf("[Gts]\nModuleCount=1\n"),
                ElementsAre(QStringLiteral("the configuration has a section 'Gts', which is not read: the "
                                           "suppression is 'GTS'")));
}

TEST_F(ConfigFaultsTest, TellOfAFileThatIsCutInTheMiddleOfALine) {
    const QStringList faults = FaultsOf("[GTS]\nModule0\\Index=0\nModule0\\Addr");
    ASSERT_THAT(CopiesKept(), SizeIs(1));
    EXPECT_EQ(faults,
              QStringList(QStringLiteral("the configuration file '%1' cannot be used (line 3 is "
                                         "neither a section nor a key); defaults are used, so that "
                                         "nothing is supervised, and the file is kept as '%1.damaged-1'")
                              .arg(ConfigPath())));
    configfaults::TellAll(m_server->GetLog());
    EXPECT_THAT(TakeLog(), IsEmpty());  // once
}

TEST_F(ConfigFaultsTest, TellOfAFileThatIsDamagedLater) {
    FaultsOf("[GTS]\nModuleCount=0\n");
    ConfigWatch watch(m_server->GetLog(), m_clock);
    watch.Start();
    QFile file(ConfigPath());
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\"no key\n");
    file.close();
    m_clock.Advance(2 * ConfigWatch::LookInterval);
    EXPECT_THAT(TakeLog().filter(QStringLiteral("was edited, and cannot be used any more")), SizeIs(1));
    Set(QStringLiteral("/MultiChannelServer/Config/SaveConfig"), true);
    m_clock.Advance(2 * ConfigWatch::LookInterval);
    EXPECT_THAT(TakeLog().filter(QStringLiteral("what is known is written anew, and the file is kept as")),
                SizeIs(1));
}

}  // namespace
