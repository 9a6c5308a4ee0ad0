// SPDX-License-Identifier: Apache-2.0
// The table of inputs in the server's window, by mouse and keyboard, with a module that is a program.
#include <apps/mcserver/suppression/inputcells.h>
#include <apps/mcserver/suppression/inputmodel.h>
#include <apps/mcserver/suppression/inputsview.h>
#include <apps/pages/noticebar.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>
#include <platform/widgets/standardnotification.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/support/printing.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

#include <functional>
#include <memory>
#include <optional>

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class AnInputsView : public testing::Test {
  protected:
    AnInputsView() {
        CfgCenter::Instance().SetStorePath(File("test.ini"));
        WriteFile("test.ini",
                  "[GTS]\nModuleCount=2\n"
                  "Module0\\Index=0\nModule0\\Name=ADAM-6051\nModule0\\Address=127.0.0."
                  "1\nModule0\\PollInterval=10\n"
                  "Module0\\Assignments\\AssignmentCount=12\nModule0\\Assignments\\DI_3=121500000\n"
                  "Module0\\Labels\\DI_3=\"Tower 1\"\n"
                  "Module1\\Index=6\nModule1\\Name=ADAM-6060\nModule1\\Address=127.0.0.1\n"
                  "Module1\\PollInterval=10\n");
    }
    ~AnInputsView() override {
        m_view.reset();
        m_display.reset();
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const warning = qobject_cast<StandardNotification*>(widget)) delete warning;
        qunsetenv("MCS_MODBUS_PORT");
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Show() {
        if (m_module) qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module->Port()));
        if (!m_module) qputenv("MCS_MODBUS_PORT", "1");  // nobody is there
        m_display = std::make_unique<GTSDisplay>();
        m_view = std::make_unique<InputsView>(m_display->GetPlant(), FrequencyRange{300000.0, 3000000000.0});
        m_view->resize(900, 400);
        m_view->show();
    }
    void ShowWithModule() {
        m_module.emplace();
        ASSERT_NO_FATAL_FAILURE(m_module->Start());
        Show();
    }
    QTableView& Table() { return *m_view->findChild<QTableView*>(QStringLiteral("Inputs")); }
    QModelIndex Cell(int row, int column) { return Table().model()->index(row, column); }
    QString TextAt(int row, int column) { return Cell(row, column).data().toString(); }
    std::string Notice() {
        const auto& bar = *m_view->findChild<NoticeBar*>();
        return bar.isVisible() ? bar.GetText().toStdString() : std::string();
    }
    void Click(const char* button) {
        QTest::mouseClick(m_view->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }
    QLineEdit* OpenCell(int row, int column) {
        const QPoint center = Table().visualRect(Cell(row, column)).center();
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        QTest::mouseDClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        return Table().viewport()->findChild<QLineEdit*>();
    }
    /// Types \a text into a cell, in place of what is there.
    void Enter(int row, int column, const char* text) {
        QLineEdit* const field = OpenCell(row, column);
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, QString::fromUtf8(text));
        QTest::keyClick(field, Qt::Key_Return);
        RunTurns(2);
    }
    /// The same through assistive technology.
    void Write(int row, int column, const char* text) {
        QLineEdit* const field = OpenCell(row, column);
        ASSERT_NE(field, nullptr);
        spoken::Write(*field, QString::fromUtf8(text));
        QTest::keyClick(field, Qt::Key_Return);
        RunTurns(2);
    }
    /// Puts \a text on the clipboard and presses the keys that paste it from a cell on.
    void PasteAt(int row, int column, const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        Table().setCurrentIndex(Cell(row, column));
        QTest::keyClick(&Table(), Qt::Key_V, Qt::ControlModifier);
    }
    ModuleSettings Settings(std::size_t module) { return m_display->GetPlant().GetSettings()[module]; }

    QString File(const char* name) const { return m_directory.filePath(QLatin1String(name)); }
    void WriteFile(const char* name, const QByteArray& bytes) const {
        QFile file(File(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    std::string ReadFile(const char* name) const {
        QFile file(File(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    std::optional<ModuleProcess> m_module;
    std::unique_ptr<GTSDisplay> m_display;
    std::unique_ptr<InputsView> m_view;
};

TEST_F(AnInputsView, HasARowForEachInput) {
    Show();
    ASSERT_EQ(Table().model()->rowCount(), 18);
    QStringList third;
    QStringList last;
    for (int column = 0; column < InputModel::State; ++column) {
        third << TextAt(3, column);
        last << TextAt(17, column);
    }
    EXPECT_EQ(third.join(QLatin1Char('|')), QStringLiteral("ADAM-6051 1|127.0.0.1|DI 3|Tower 1|121.500"));
    EXPECT_EQ(last.join(QLatin1Char('|')), QStringLiteral("ADAM-6060 7|127.0.0.1|DI 5||"));
}

TEST_F(AnInputsView, ShowsWhatTheModuleReads) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    m_module->Say("key 3");
    EXPECT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cf keyed"); }));
    EXPECT_EQ(TextAt(2, InputModel::State), QStringLiteral("\u25cb silent"));
}

TEST_F(AnInputsView, SaysThatNothingIsKnownOfAModuleInError) {
    Show();
    EXPECT_TRUE(
        WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u2715 not supervised"); }));
    EXPECT_EQ(TextAt(4, InputModel::State), QStringLiteral("? not live"));  // it has no frequency
    EXPECT_TRUE(WaitUntil([&] {
        return Cell(3, InputModel::State).data(Qt::ToolTipRole) == QStringLiteral("The module is in error");
    }));
    EXPECT_NE(Cell(3, InputModel::State).data(Qt::ForegroundRole), QVariant());
}

TEST_F(AnInputsView, HasRoomForWhatIsWrongWithAModule) {
    Show();
    ASSERT_TRUE(
        WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u2715 not supervised"); }));
    const auto widthOf = [&](const QString& text) { return Table().fontMetrics().horizontalAdvance(text); };
    const int beside =
        Table().sizeHintForIndex(Cell(3, InputModel::State)).width() - widthOf(TextAt(3, InputModel::State));
    for (const QString& text : inputcells::StateTexts())
        EXPECT_GE(Table().columnWidth(InputModel::State), widthOf(text) + beside) << text.toStdString();
}

TEST_F(AnInputsView, HasRoomForTheTitlesOfItsColumns) {
    Show();
    QHeaderView& titles = *Table().horizontalHeader();
    for (int column = 0; column < titles.count(); ++column)
        EXPECT_GE(titles.sectionSize(column), titles.sectionSizeHint(column)) << column;
}

TEST_F(AnInputsView, LeavesWhatIsBeingTypedAlone) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    Table().edit(Cell(3, InputModel::Name));
    const QPointer<QLineEdit> editor = Table().viewport()->findChild<QLineEdit*>();
    ASSERT_FALSE(editor.isNull());
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Tower"));
    m_module->Say("key 3");
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cf keyed"); }));
    ASSERT_FALSE(editor.isNull());
    EXPECT_EQ(editor->text(), QStringLiteral("Tower"));
}

TEST_F(AnInputsView, MarksWhatWasAssignedElsewhereAndNeverBlanks) {
    Show();
    EXPECT_TRUE(Cell(4, InputModel::Frequency).data(Qt::DecorationRole).isNull());
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6051-0"), 4, 5e12);
    EXPECT_TRUE(WaitUntil([&] { return !Cell(4, InputModel::Frequency).data(Qt::DecorationRole).isNull(); }));
    EXPECT_THAT(Cell(4, InputModel::Frequency).data(Qt::ToolTipRole).toString().toStdString(),
                HasSubstr("it will never blank"));
}

struct Frequency {
    const char* name;
    const char* typed;
    double hz;
    const char* shown;
};

class ATypedFrequency : public AnInputsView, public testing::WithParamInterface<Frequency> {};

TEST_P(ATypedFrequency, IsTakenAtOnce) {
    Show();
    Enter(4, InputModel::Frequency, GetParam().typed);
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(Settings(0).frequencies[4], GetParam().hz);
    EXPECT_EQ(TextAt(4, InputModel::Frequency), QLatin1String(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(All, ATypedFrequency,
                         testing::Values(Frequency{"Megahertz", "118.1", 118100000.0, "118.100"},
                                         Frequency{"AComma", "118,1", 118100000.0, "118.100"},
                                         Frequency{"Kilohertz", "118100 kHz", 118100000.0, "118.100"},
                                         Frequency{"Hertz", "118100000", 118100000.0, "118.100"},
                                         Frequency{"Nothing", "", 0.0, ""}, Frequency{"Zero", "0", 0.0, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

struct Refused {
    const char* name;
    int column;
    const char* typed;
    const char* reason;
};

class ARefusedEntry : public AnInputsView, public testing::WithParamInterface<Refused> {};

TEST_P(ARefusedEntry, ChangesNothingAndSaysWhy) {
    Show();
    const ModuleSettings before = Settings(0);
    Enter(3, GetParam().column, GetParam().typed);
    EXPECT_EQ(Notice(), std::string("Not taken. ADAM-6051 1, DI 3: ") + GetParam().reason);
    EXPECT_EQ(Settings(0), before);
    Enter(3, InputModel::Name, "Tower");
    EXPECT_EQ(Notice(), "");  // of what is past
}

INSTANTIATE_TEST_SUITE_P(
    All, ARefusedEntry,
    testing::Values(
        Refused{"AWord", InputModel::Frequency, "tower", "\"tower\" is no frequency"},
        Refused{"TooMuch", InputModel::Frequency, "5 GHz", "5000 MHz lies outside 0.3 to 3000 MHz"},
        Refused{"TooLittle", InputModel::Frequency, "0.299", "0.299 MHz lies outside 0.3 to 3000 MHz"},
        Refused{"ANegativeOne", InputModel::Frequency, "-118.1", "\"-118.1\" is no frequency"},
        Refused{"NoAddress", InputModel::Address, "10.0.0.300",
                "\"10.0.0.300\" cannot be right: '300' is no number from 0 to 255 without leading zeros"},
        Refused{"AnEmptyAddress", InputModel::Address, "", "\"\" cannot be right: it has no IP address"},
        Refused{"TheNameOfAnotherModule", InputModel::Module, "ADAM-6060 7",
                "another module is called \"ADAM-6060 7\""},
        Refused{"ALongNameOfAModule", InputModel::Module, "12345678901234567890123456789012345678901",
                "a name has 40 characters at most"},
        Refused{"ALongName", InputModel::Name, "12345678901234567890123456789012345678901",
                "a name has 40 characters at most"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(AnInputsView, ChangesTheAddressOfTheWholeModule) {
    Show();
    Enter(3, InputModel::Address, "127.0.0.2");
    EXPECT_EQ(Settings(0).address, QStringLiteral("127.0.0.2"));
    EXPECT_EQ(Settings(0).frequencies[3], 121500000.0);
    EXPECT_EQ(TextAt(11, InputModel::Address), QStringLiteral("127.0.0.2"));
    EXPECT_EQ(TextAt(12, InputModel::Address), QStringLiteral("127.0.0.1"));
}

TEST_F(AnInputsView, NamesTheWholeModule) {
    Show();
    Enter(3, InputModel::Module, " Tower mast ");
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(Settings(0).label, QStringLiteral("Tower mast"));
    EXPECT_EQ(TextAt(0, InputModel::Module), QStringLiteral("Tower mast"));
    EXPECT_EQ(TextAt(12, InputModel::Module), QStringLiteral("ADAM-6060 7"));
    Enter(3, InputModel::Module, "");
    EXPECT_EQ(TextAt(0, InputModel::Module), QStringLiteral("ADAM-6051 1"));
}

TEST_F(AnInputsView, TakesCellsOfASpreadsheet) {
    Show();
    PasteAt(4, InputModel::Name, "Tower 2\t118,1\r\nApron\t121.8\r\n");
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(Settings(0).labels[4], QStringLiteral("Tower 2"));
    EXPECT_EQ(Settings(0).frequencies[4], 118100000.0);
    EXPECT_EQ(Settings(0).labels[5], QStringLiteral("Apron"));
    EXPECT_EQ(Settings(0).frequencies[5], 121800000.0);
}

TEST_F(AnInputsView, TakesNothingOfCellsOfWhichOneIsWrong) {
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

class APastedText : public AnInputsView, public testing::WithParamInterface<Pasted> {};

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

TEST_F(AnInputsView, OffersToTakeBackWhatWasPastedOrImported) {
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
    PasteAt(0, InputModel::Name, "Gate");
    EXPECT_EQ(what, QStringLiteral("One cell of the inputs is changed."));
    PasteAt(3, InputModel::Module, "Tower mast\t127.0.0.2");
    PasteAt(3, InputModel::Name, "Twr\t134.1\nVan\t135.1");
    EXPECT_EQ(what, QStringLiteral("4 cells of the inputs are changed."));
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
    EXPECT_EQ(what, QStringLiteral("2 cells of the inputs are changed."));
    undo();
    EXPECT_EQ(Settings(0).labels[3], before.labels[3]);
    m_view.reset();
    m_display.reset();
    undo();
}

TEST_F(AnInputsView, WritesAFileThatItReads) {
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

TEST_F(AnInputsView, IsSavedWhenTheDisplayGoes) {
    Show();
    Enter(3, InputModel::Name, "");
    Enter(4, InputModel::Name, "Tower 2");
    m_view.reset();
    m_display.reset();
    EXPECT_THAT(ReadFile("test.ini"), HasSubstr("Module0\\Labels\\DI_4=Tower 2\n"));
    Show();
    EXPECT_EQ(TextAt(3, InputModel::Name), QString());
    EXPECT_EQ(TextAt(4, InputModel::Name), QStringLiteral("Tower 2"));
}

struct Csv {
    const char* name;
    const char* text;
    const char* notice;
};

class ACsvFile : public AnInputsView, public testing::WithParamInterface<Csv> {};

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
        Csv{"UnknownInput", "module,input,name,frequency_mhz\nADAM-6051-1,4,a,118.1\nADAM-6051-1,12,b,119\n",
            "Line 3: there is no input 12 of a module ADAM-6051-1"},
        Csv{"WrongFrequency", "module,input,name,frequency_mhz\nADAM-6051-1,4,a,118.1\nADAM-6051-1,5,b,x\n",
            "Line 3: \"x\" is no frequency"},
        Csv{"MissingCell", "module,input,name,frequency_mhz\nADAM-6051-1,4,a\n",
            "Line 2: it has 3 cells and not 4"},
        Csv{"OneCell", "module,input,name,frequency_mhz\nADAM-6051-1\n", "Line 2: it has one cell and not 4"},
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

TEST_F(AnInputsView, TestsTheConnectionOfTheModuleOfTheCurrentRow) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    m_module->Say("key 3");
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cf keyed"); }));
    const auto& button = *m_view->findChild<QPushButton*>(QStringLiteral("TestConnection"));
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    ASSERT_TRUE(button.isEnabled());
    Click("TestConnection");
    EXPECT_FALSE(button.isEnabled());  // the window goes on meanwhile
    EXPECT_THAT(Notice(), StartsWith("Testing ADAM-6051 1 at 127.0.0.1"));
    EXPECT_TRUE(WaitUntil([&] { return button.isEnabled(); }));
    EXPECT_THAT(Notice(), MatchesRegex("ADAM-6051 1 at 127.0.0.1 answers at ..:..:..: keyed: Tower 1"));
}

TEST_F(AnInputsView, ForgetsATestWhenAnotherModuleIsChosen) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    Click("TestConnection");
    ASSERT_TRUE(
        WaitUntil([&] { return QString::fromStdString(Notice()).contains(QStringLiteral("answers")); }));
    Table().setCurrentIndex(Cell(5, InputModel::Name));
    EXPECT_THAT(Notice(), HasSubstr("answers"));
    Table().setCurrentIndex(Cell(14, InputModel::Name));
    EXPECT_EQ(Notice(), "");
}

TEST_F(AnInputsView, ForgetsATestWhenItsModuleIsInAnotherState) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    Click("TestConnection");
    ASSERT_TRUE(
        WaitUntil([&] { return QString::fromStdString(Notice()).contains(QStringLiteral("answers")); }));
    m_module->Say("fault exception 6");
    EXPECT_TRUE(WaitUntil([&] { return Notice().empty(); })) << Notice();
}

TEST_F(AnInputsView, KeepsAnotherNoticeThanThatOfATest) {
    Show();
    Enter(3, InputModel::Frequency, "tower");
    Table().setCurrentIndex(Cell(14, InputModel::Name));
    EXPECT_THAT(Notice(), HasSubstr("is no frequency"));
}

TEST_F(AnInputsView, HasRoomForTheNamesOfModules) {
    Show();
    const auto width = [&] { return Table().columnWidth(InputModel::Module); };
    const auto widthOf = [&](const QString& text) { return Table().fontMetrics().horizontalAdvance(text); };
    const int first = width();
    constexpr int letters = 170;  // of whatever font there is
    m_view->resize(letters * Table().fontMetrics().averageCharWidth(), 400);
    Enter(3, InputModel::Module, "Tower mast & shelter, east");
    EXPECT_GT(width(), widthOf(QStringLiteral("Tower mast & shelter, east")));
    Enter(3, InputModel::Module, "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
    EXPECT_LT(width(), m_view->width() / 2);
    EXPECT_GE(Table().columnWidth(InputModel::Name), widthOf(QStringLiteral("Turm West, Reserve 2")));
    Enter(3, InputModel::Module, "");
    EXPECT_EQ(width(), first);
}

TEST_F(AnInputsView, CallsAFrequencySupervisedThatAnotherModuleWatches) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(12, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6060-6"), 0, 121.5e6);
    m_display->GetPlant().SetAddress(QStringLiteral("ADAM-6051-0"), QStringLiteral("256.0.0.1"));
    EXPECT_TRUE(WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("? not live"); }));
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6060-6"), 0, 0.0);
    EXPECT_TRUE(
        WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u2715 not supervised"); }));
}

TEST_F(AnInputsView, HasKeysForItsButtonsAndIsLeftByTab) {
    Show();
    for (const char* name : {"TestConnection", "Paste", "Import", "Export"})
        EXPECT_FALSE(m_view->findChild<QPushButton*>(QLatin1String(name))->shortcut().isEmpty()) << name;
    EXPECT_FALSE(Table().tabKeyNavigation());
}

TEST_F(AnInputsView, SaysWhyAModuleDoesNotAnswer) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    m_module->Say("fault exception 6");
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    EXPECT_TRUE(
        WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u2715 not supervised"); }));
    Click("TestConnection");
    EXPECT_TRUE(WaitUntil([&] {
        return QString::fromStdString(Notice()).contains(QStringLiteral("does not answer"));
    })) << Notice();
    EXPECT_THAT(Notice(), MatchesRegex("ADAM-6051 1 at 127.0.0.1 does not answer at ..:..:..: "
                                       "Modbus exception 6: the module is busy"));
}

TEST_F(AnInputsView, GoesWhileATestIsUnderWay) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    m_module->Say("fault silence");
    Table().setCurrentIndex(Cell(3, InputModel::Name));
    Click("TestConnection");
    m_view.reset();
    RunTurns(2);
}

TEST_F(AnInputsView, LosesTheRowsOfAModuleThatIsDeleted) {
    Show();
    auto& modules = *m_display->findChild<QTreeWidget*>();
    const QPoint place = modules.visualItemRect(modules.topLevelItem(0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, modules.viewport()->mapToGlobal(place));
    QApplication::sendEvent(modules.viewport(), &event);
    for (QAction* const action : m_display->findChild<QMenu*>()->actions())
        if (action->text() == QStringLiteral("Delete")) action->trigger();
    EXPECT_TRUE(WaitUntil([&] { return Table().model()->rowCount() == 6; }));
    EXPECT_EQ(TextAt(0, InputModel::Module), QStringLiteral("ADAM-6060 7"));
    Enter(0, InputModel::Frequency, "118.1");
    EXPECT_EQ(Settings(0).frequencies[0], 118100000.0);
}

TEST_F(AnInputsView, TakesOrRefusesWhatAssistiveTechnologyWritesLikeWhatIsTyped) {
    Show();
    ASSERT_NO_FATAL_FAILURE(Write(4, InputModel::Frequency, "118.1"));
    EXPECT_EQ(Settings(0).frequencies[4], 118100000.0);
    ASSERT_NO_FATAL_FAILURE(Write(4, InputModel::Frequency, "5000 MHz"));
    EXPECT_EQ(Settings(0).frequencies[4], 118100000.0);
    EXPECT_THAT(Notice(), HasSubstr("ADAM-6051 1, DI 4"));
}

}  // namespace
