// SPDX-License-Identifier: Apache-2.0
// What is pasted into the table of inputs, imported into it and written from it.
#include <tests/apps/mcserver/inputsviewfixture.h>

#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtCore/QTimer>

#include <functional>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class SeveralInputs : public InputsViewTest {};

TEST_F(SeveralInputs, TakesCellsOfASpreadsheet) {
    Show();
    PasteAt(4, InputModel::Name, "Tower 2\t118,1\r\nApron\t121.8\r\n");
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(Settings(0).labels[4], QStringLiteral("Tower 2"));
    EXPECT_EQ(Settings(0).frequencies[4], 118100000.0);
    EXPECT_EQ(Settings(0).labels[5], QStringLiteral("Apron"));
    EXPECT_EQ(Settings(0).frequencies[5], 121800000.0);
}

TEST_F(SeveralInputs, TakesNothingOfCellsOfWhichOneIsWrong) {
    Show();
    const ModuleSettings before = Settings(0);
    PasteAt(4, InputModel::Name, "Tower 2\t118.1\nApron\t5000000 MHz\n");
    EXPECT_EQ(Notice(), "Not taken. ADAM-6051 1, DI 5: 5000000 MHz lies outside 0.3 to 3000 MHz");
    EXPECT_EQ(Settings(0), before);
    PasteAt(17, InputModel::Frequency, "118.1\n118.2");
    EXPECT_EQ(Notice(), "Not taken. There are 2 lines for one row");
    PasteAt(4, InputModel::Frequency, "118.1\tx");
    EXPECT_EQ(Notice(), "Not taken. ADAM-6051 1, DI 4: this column cannot be changed");
    EXPECT_EQ(Settings(0), before);
}

/// What somebody copied elsewhere, pasted into the row of input 4 of the first module.
struct Pasted {
    const char* name;
    int column;
    const char* text;
    const char* label;  ///< of that input then; null if nothing may be taken
    double hz;
    const char* notice;
};

class APastedText : public InputsViewTest, public testing::WithParamInterface<Pasted> {};

TEST_P(APastedText, IsTakenByItsCellsOrNotAtAll) {
    Show();
    const ModuleSettings before = Settings(0);
    PasteAt(4, GetParam().column, GetParam().text);
    EXPECT_EQ(Notice(), GetParam().notice);
    if (GetParam().label == nullptr) {
        EXPECT_EQ(Settings(0), before);
        return;
    }
    EXPECT_EQ(Settings(0).labels[4].toStdString(), GetParam().label);
    EXPECT_EQ(Settings(0).frequencies[4], GetParam().hz);
}

INSTANTIATE_TEST_SUITE_P(
    All, APastedText,
    testing::Values(
        Pasted{"Tabs", InputModel::Name, "Tower\t118,1\nVan\t119", "Tower", 118.1e6, ""},
        Pasted{"TabsAndCommas", InputModel::Name, "Tower, West\t118,1", "Tower, West", 118.1e6, ""},
        Pasted{"Semicolons", InputModel::Name, "Twr;134.1\r\nTwr2;134,2\r\n", "Twr", 134.1e6, ""},
        Pasted{"Commas", InputModel::Name, "Twr,134.1\nTwr2,134.2\n", "Twr", 134.1e6, ""},
        Pasted{"Quotes", InputModel::Name, "\"Tower, West\",134.1", "Tower, West", 134.1e6, ""},
        Pasted{"DecimalCommas", InputModel::Frequency, "118,1\n118,2", "", 118.1e6, ""},
        Pasted{"ANameAlone", InputModel::Name, "Tower West", "Tower West", 0.0, ""},
        Pasted{"AFile", InputModel::Name,
               "module,input,name,frequency_mhz\nADAM-6051 1,4,Twr,134.1\nADAM-6060 7,0,Van,119\n", "Twr",
               134.1e6, "Names and frequencies of the clipboard are taken"},
        Pasted{"AFileOfASpreadsheet", InputModel::State,
               "module\tinput\tname\tfrequency_mhz\r\nADAM-6051 1\t4\tTwr\t134,1\r\n", "Twr", 134.1e6,
               "Names and frequencies of the clipboard are taken"},
        Pasted{"AWrongFile", InputModel::Name,
               "module,input,name,frequency_mhz\nADAM-6051 1,4,Twr,134.1\nADAM-6051 1,12,Van,119\n", nullptr,
               0, "Not taken. Line 3: there is no input 12 of a module ADAM-6051 1"},
        Pasted{"NoFileButItsLines", InputModel::Name, "ADAM-6051 1,4,Twr,134.1", nullptr, 0,
               "Not taken. ADAM-6051 1, DI 4: this column cannot be changed"},
        Pasted{"DecimalCommasBetweenCommas", InputModel::Name, "Twr,134,1\nTwr2,134,2", nullptr, 0,
               "Not taken. ADAM-6051 1, DI 4: this column cannot be changed"},
        Pasted{"LinesOfDifferentLength", InputModel::Name, "Twr;134.1\nTwr2", nullptr, 0,
               "Not taken. Line 2: it has one cell and not 2"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SeveralInputs, OffersToTakeBackWhatWasPastedOrImported) {
    Show();
    QString what;
    std::function<void()> undo;
    QObject::connect(m_view.get(), &InputsView::Acted, m_view.get(),
                     [&](const QString& acted, const std::function<void()>& takeBack) {
                         what = acted;
                         undo = takeBack;
                     });
    const ModuleSettings before = Settings(0);
    Enter(0, InputModel::Name, "Apron");
    EXPECT_FALSE(undo);  // it is one cell, and it is in front of whoever typed it
    Enter(3, InputModel::Frequency, "");
    EXPECT_EQ(what, QStringLiteral("One cell of the inputs is changed. No input has any more: 121.5 MHz."));
    ASSERT_TRUE(undo);
    undo();
    EXPECT_EQ(Settings(0).frequencies[3], 121.5e6);
    Enter(0, InputModel::Address, "127.0.0.9");
    EXPECT_EQ(what, QStringLiteral("One cell of the inputs is changed."));
    undo();
    EXPECT_EQ(Settings(0).address, before.address);
    PasteAt(0, InputModel::Name, "Gate");
    EXPECT_EQ(what, QStringLiteral("One cell of the inputs is changed."));
    PasteAt(3, InputModel::Module, "Tower mast\t127.0.0.2");
    PasteAt(3, InputModel::Name, "Twr\t134.1\nVan\t135.1");
    EXPECT_EQ(what, QStringLiteral("4 cells of the inputs are changed. No input has any more: 121.5 MHz."));
    Enter(4, InputModel::Name, "Van 2");
    ASSERT_TRUE(undo);
    undo();
    EXPECT_EQ(Settings(0).labels[3], QStringLiteral("Tower 1"));
    EXPECT_EQ(Settings(0).frequencies[3], 121.5e6);
    EXPECT_EQ(Settings(0).labels[4], QStringLiteral("Van 2"));  // which somebody entered since
    EXPECT_EQ(Settings(0).frequencies[4], 0.0);
    EXPECT_EQ(Settings(0).label, QStringLiteral("Tower mast"));
    WriteFile("inputs.csv", "module,input,name,frequency_mhz\nTower mast,3,Twr,134.1\n");
    m_view->ImportFrom(File("inputs.csv"));
    EXPECT_EQ(what, QStringLiteral("2 cells of the inputs are changed. No input has any more: 121.5 MHz."));
    undo();
    EXPECT_EQ(Settings(0).labels[3], before.labels[3]);
    m_view.reset();
    m_display.reset();
    undo();
}

TEST_F(SeveralInputs, SaysThatAFileIsTakenUntilThatIsUndoneOrForAWhile) {
    Show();
    std::function<void()> undo;
    QObject::connect(m_view.get(), &InputsView::Acted, m_view.get(),
                     [&](const QString&, const std::function<void()>& takeBack) { undo = takeBack; });
    WriteFile("inputs.csv", "module,input,name,frequency_mhz\nADAM-6051 1,4,Twr,134.1\n");
    m_view->ImportFrom(File("inputs.csv"));
    EXPECT_THAT(Notice(), HasSubstr("are taken"));
    ASSERT_TRUE(undo);
    undo();
    EXPECT_EQ(Notice(), "");

    m_view->ImportFrom(File("inputs.csv"));
    auto* const timer = m_view->findChild<QTimer*>(QStringLiteral("TakenTimer"));
    ASSERT_TRUE(timer != nullptr && timer->isActive());
    timer->start(0);
    EXPECT_TRUE(WaitUntil([this] { return Notice().empty(); }));
    m_view->ImportFrom(File("inputs.csv"));
    m_view->ExportTo(File("other.csv"));
    undo();
    EXPECT_THAT(Notice(), StartsWith("Written to "));  // which undoing does not change
}

TEST_F(SeveralInputs, WritesAFileThatItReads) {
    Show();
    Enter(4, InputModel::Name, "Say \"a, b\"");
    m_view->ExportTo(File("inputs.csv"));
    EXPECT_THAT(Notice(), StartsWith("Written to "));
    const std::string written = ReadFile("inputs.csv");
    EXPECT_THAT(written, StartsWith("module,input,name,frequency_mhz\n\"ADAM-6051 1\",0,,\n"));
    EXPECT_THAT(
        written,
        HasSubstr("\n\"ADAM-6051 1\",3,\"Tower 1\",121.5\n\"ADAM-6051 1\",4,\"Say \"\"a, b\"\"\",\n"));
    const ModuleSettings before = Settings(0);
    PasteAt(3, InputModel::Name, "x\t118\ny\t119");
    ASSERT_NE(Settings(0), before);
    m_view->ImportFrom(File("inputs.csv"));
    EXPECT_THAT(Notice(), HasSubstr("are taken"));
    EXPECT_EQ(Settings(0), before);
}

struct Csv {
    const char* name;
    const char* text;
    const char* notice;
};

class ACsvFile : public InputsViewTest, public testing::WithParamInterface<Csv> {};

TEST_P(ACsvFile, IsTakenWholeOrNotAtAll) {
    Show();
    const ModuleSettings before = Settings(0);
    WriteFile("inputs.csv", GetParam().text);
    m_view->ImportFrom(File("inputs.csv"));
    EXPECT_THAT(Notice(), HasSubstr(GetParam().notice));
    EXPECT_EQ(Settings(0) == before, !QByteArray(GetParam().notice).contains("are taken"));
}

INSTANTIATE_TEST_SUITE_P(
    All, ACsvFile,
    testing::Values(
        Csv{"OfASpreadsheet",
            "\xef\xbb\xbfmodule;input;name;frequency_mhz\r\nADAM-6051-1;4;Tower 2;118,1\r\n", "are taken"},
        Csv{"WithNamesAsTheTableHasThem", "module,input,name,frequency_mhz\nADAM-6051 1,4,Tower 2,118.1\n",
            "are taken"},
        Csv{"WithTabs", "module\tinput\tname\tfrequency_mhz\nADAM-6051-1\t4\tTower 2\t118.1\n", "are taken"},
        Csv{"OtherColumns", "input,name\n4,a\n", "The first line has to be: module,input,name,frequency_mhz"},
        Csv{"Empty", "", "The first line has to be"},
        Csv{"OnlyTitles", "module,input,name,frequency_mhz\n\n",
            "inputs.csv is not taken. There is nothing below the first line"},
        Csv{"UnknownInput", "module,input,name,frequency_mhz\nADAM-6051-1,4,a,118.1\nADAM-6051-1,12,b,119\n",
            "Line 3: there is no input 12 of a module ADAM-6051-1"},
        Csv{"WrongFrequency", "module,input,name,frequency_mhz\nADAM-6051-1,4,a,118.1\nADAM-6051-1,5,b,x\n",
            "Line 3: \"x\" is no frequency"},
        Csv{"MissingCell", "module,input,name,frequency_mhz\nADAM-6051-1,4,a\n",
            "Line 2: it has 3 cells and not 4"},
        Csv{"OneCell", "module,input,name,frequency_mhz\nADAM-6051-1\n", "Line 2: it has one cell and not 4"},
        Csv{"AnOpenQuote", "module,input,name,frequency_mhz\nADAM-6051-1,4,\"a,118.1\n",
            "Line 2: a quotation mark is not closed"},
        Csv{"NoText", "\xff\xfe\x01", "is not UTF-8 text"},
        Csv{"OneInputTwice",
            "module,input,name,frequency_mhz\nADAM-6060 7,4,One,250\nADAM-6060 7,4,Two,251\n",
            "Line 3: this input stands in line 2 too"},
        Csv{"OneInputByTwoNamesOfItsModule",
            "module,input,name,frequency_mhz\nADAM-6051 1,4,a,118\n\nADAM-6051-1,4,a,118\n",
            "Line 4: this input stands in line 2 too"},
        Csv{"NumbersThatWouldBeHertz", "module,input,name,frequency_mhz\nADAM-6051 1,4,a,9999999\n",
            "Line 2: 9999999 MHz lies outside 0.3 to 3000 MHz"},
        Csv{"HertzThatSaySo", "module,input,name,frequency_mhz\nADAM-6051 1,4,a,9999999 Hz\n", "are taken"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
