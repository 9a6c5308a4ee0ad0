// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/inputassignmenteditor.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <QtTest/QTest>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include <ostream>

namespace {

class AnInputAssignmentEditor : public DataModuleTest {
  protected:
    void Open(const std::vector<DataModule*>& modules) {
        m_editor = std::make_unique<InputAssignmentEditor>(nullptr, modules);
        m_editor->show();
    }
    QTableWidget& Table() { return *m_editor->findChild<QTableWidget*>(); }
    QString CellText(int row, int column) { return Table().item(row, column)->text(); }
    void Click(const char* button) {
        QTest::mouseClick(m_editor->findChild<QPushButton*>(Text(button)), Qt::LeftButton);
    }
    QLineEdit* OpenCell(int row, int column) {
        const QPoint center = Table().visualItemRect(Table().item(row, column)).center();
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        QTest::mouseDClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        return Table().viewport()->findChild<QLineEdit*>();
    }
    /// Types \a text into a cell, in place of what is there.
    void Enter(int row, int column, const QString& text) {
        auto* const field = OpenCell(row, column);
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        RunTurns(2);
        EXPECT_TRUE(m_editor->isVisible());
    }

    std::unique_ptr<InputAssignmentEditor> m_editor;
};

TEST_F(AnInputAssignmentEditor, IsAModalDialogInThisOrder) {
    Open({});
    EXPECT_EQ(m_editor->objectName(), Text("InputAssignmentEditor"));
    EXPECT_TRUE(m_editor->isModal());
    EXPECT_EQ(m_editor->minimumSize(), QSize(550, 200));
    const auto& layout = *qobject_cast<QVBoxLayout*>(m_editor->layout());
    ASSERT_EQ(layout.count(), 3);
    const auto* const caption = qobject_cast<QLabel*>(layout.itemAt(0)->widget());
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->text(), Text("Assignment of Frequency (in MHz) to Digital Input of data module:"));
    EXPECT_EQ(caption->buddy(), &Table());
    EXPECT_EQ(layout.itemAt(1)->widget(), &Table());
    EXPECT_EQ(Table().accessibleName(), Text("Frequencies in MHz"));
    std::vector<QString> buttons;
    for (int i = 0; i < layout.itemAt(2)->layout()->count(); ++i)
        if (const auto* const button =
                qobject_cast<QPushButton*>(layout.itemAt(2)->layout()->itemAt(i)->widget())) {
            buttons.push_back(button->text());
            EXPECT_EQ(button->width(), 80);
        }
    EXPECT_EQ(buttons, (std::vector<QString>{Text("Ok"), Text("Apply"), Text("Cancel")}));
}

TEST_F(AnInputAssignmentEditor, HasARowPerModuleAndAColumnPerInput) {
    const auto first = Make(4, "ADAM-6060");
    const auto second = Make(0);
    Open({first.get(), second.get()});
    ASSERT_EQ(Table().rowCount(), 2);
    ASSERT_EQ(Table().columnCount(), 12);
    EXPECT_EQ(Table().verticalHeaderItem(0)->text(), Text("ADAM-6060-5"));
    EXPECT_EQ(Table().verticalHeaderItem(1)->text(), Text("ADAM-6051-1"));
    for (int column = 0; column < 12; ++column)
        EXPECT_EQ(Table().horizontalHeaderItem(column)->text(), Text("DI %1").arg(column));
}

TEST_F(AnInputAssignmentEditor, HasAsManyColumnsAsTheModuleWithMostInputs) {
    const auto module = Make(0, "ADAM-6060");
    Open({module.get()});
    EXPECT_EQ(Table().columnCount(), 6);
    Open({});
    EXPECT_EQ(Table().columnCount(), 0);
}

TEST_F(AnInputAssignmentEditor, LeavesInputsEmptyThatAModuleDoesNotHave) {
    const auto first = Make(0, "ADAM-6060");
    const auto second = Make(1);
    Open({first.get(), second.get()});
    EXPECT_EQ(CellText(0, 5), Text("0.000"));
    EXPECT_EQ(CellText(0, 6), QString());
    EXPECT_EQ(Table().item(0, 6)->flags(), Qt::NoItemFlags);
    Click("apply");
    EXPECT_EQ(CellText(0, 6), QString());
    EXPECT_EQ(first->GetFrequency(6), 0.0);
}

struct ShownRow {
    const char* name;
    double frequency;
    const char* text;
};

void PrintTo(const ShownRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const ShownRow shownRows[] = {
    {"None",               0.0,          "0.000"},
    {"OneDecimal",         118100000.0,  "118.100"},
    {"ThreeDecimals",      118125000.0,  "118.125"},
    {"MoreDecimals",       118008333.0,  "118.008"},
    {"RoundedUp",          118008600.0,  "118.009"},
    {"Gigahertz",          5800000000.0, "5800.000"},
    {"LessThanAKilohertz", 400.0,        "0.000"},
    {"ANegativeOne",       -5000000.0,   "-5.000"},
};
// clang-format on

class AShownFrequency : public AnInputAssignmentEditor, public testing::WithParamInterface<ShownRow> {};

TEST_P(AShownFrequency, IsInMegahertzWithThreeDecimals) {
    const auto module = Make();
    module->SetFrequency(3, GetParam().frequency);
    Open({module.get()});
    EXPECT_EQ(CellText(0, 3), Text(GetParam().text));
}

TEST_P(AShownFrequency, StaysAsItIsUnlessItsCellIsChanged) {
    const auto module = Make();
    module->SetFrequency(3, GetParam().frequency);
    Open({module.get()});
    Click("ok");
    EXPECT_EQ(module->GetFrequency(3), GetParam().frequency);
}

INSTANTIATE_TEST_SUITE_P(Table, AShownFrequency, testing::ValuesIn(shownRows),
                         testing::PrintToStringParamName());

TEST_F(AnInputAssignmentEditor, TakesWhatAssistiveTechnologyWritesLikeWhatIsTyped) {
    const auto module = Make();
    module->SetFrequency(2, 118100000.0);
    Open({module.get()});
    QLineEdit* const field = OpenCell(0, 2);
    ASSERT_NE(field, nullptr);
    spoken::Write(*field, Text("121.5"));
    QTest::keyClick(field, Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(CellText(0, 2), Text("121.5"));
    spoken::Press(*m_editor->findChild<QPushButton*>(Text("apply")));
    EXPECT_TRUE(WaitUntil([&] { return module->GetFrequency(2) == 121500000.0; })) << "once the button is up";
}

struct EnteredRow {
    const char* name;
    const char* entered;
    const char* shown;  ///< after it was applied
    double frequency;
    bool isMarked;
};

void PrintTo(const EnteredRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const EnteredRow enteredRows[] = {
    {"APoint",              "118.1",       "118.1",      118100000.0,         false},
    {"AComma",              "118,1",       "118.1",      118100000.0,         false},
    {"NoDecimals",          "118",         "118",        118000000.0,         false},
    {"SpacesAround",        " 118.1 ",     " 118.1 ",    118100000.0,         false},
    {"AnExponent",          "1.181e2",     "1.181e2",    118100000.0,         false},
    {"MoreDecimals",        "118.008333",  "118.008333", 118008333.0,         false},
    {"PartsOfAHertz",       "118.0083335", "118.0083335",118008333.5,         false},
    {"InBinaryALittleLess", "128.003",     "128.003",    128003000.0,         false},
    {"ThePlusSign",         "+118.1",      "+118.1",     118100000.0,         false},
    {"Zero",                "0",           "0",          0.0,                 false},
    {"Nothing",             "",            "",           0.0,                 false},
    {"AWord",               "tower",       "tower",      0.0,                 true},
    {"AUnit",               "118.1 MHz",   "118.1 MHz",  0.0,                 true},
    {"SpacesWithin",        "118 100",     "118 100",    0.0,                 true},
    {"TwoCommas",           "1,118,1",     "1.118.1",    0.0,                 true},
    {"APointAndAComma",     "1.118,1",     "1.118.1",    0.0,                 true},
    {"ANegativeOne",        "-118.1",      "-118.1",     -118100000.0,        true},
    {"NotANumber",          "nan",         "nan",        0.0,                 true},
    {"Infinity",            "inf",         "inf",        0.0,                 true},
    {"TooMuch",             "1e305",       "1e305",      0.0,                 true},
    {"MuchTooMuch",         "1e400",       "1e400",      0.0,                 true},
    {"TwoToThe63",          "9223372036854.775808", "9223372036854.775808", 9223372036854775808.0, false},
    {"Hexadecimal",         "0x10",        "0x10",       0.0,                 true},
};
// clang-format on

class AnEnteredFrequency : public AnInputAssignmentEditor, public testing::WithParamInterface<EnteredRow> {};

TEST_P(AnEnteredFrequency, IsTakenOver) {
    const EnteredRow& row = GetParam();
    const auto module = Make();
    module->SetFrequency(2, Second);
    Open({module.get()});
    Enter(0, 2, Text(row.entered));
    EXPECT_EQ(module->GetFrequency(2), Second);
    Click("apply");
    EXPECT_TRUE(m_editor->isVisible());
    EXPECT_EQ(CellText(0, 2), Text(row.shown));
    EXPECT_EQ(module->GetFrequency(2), row.frequency);
    EXPECT_EQ(Table().item(0, 2)->toolTip(),
              row.isMarked ? Text("This is no frequency: nothing is assigned to the input") : QString());
    EXPECT_EQ(Table().item(0, 2)->icon().isNull(), !row.isMarked);
}

INSTANTIATE_TEST_SUITE_P(Table, AnEnteredFrequency, testing::ValuesIn(enteredRows),
                         testing::PrintToStringParamName());

TEST_F(AnInputAssignmentEditor, TakesOverATextThatLooksLikeTheFrequencyThatItReplaces) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 2, Text("118.1004"));
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), 118100400.0);
    Enter(0, 2, Text("118.100"));
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), First);
}

TEST_F(AnInputAssignmentEditor, SetsWhatIsShownWhereItIsTypedAgain) {
    const auto module = Make();
    module->SetFrequency(2, 118008333.0);
    Open({module.get()});
    ASSERT_EQ(CellText(0, 2), Text("118.008"));
    Enter(0, 2, Text("118.008"));
    EXPECT_EQ(module->GetFrequency(2), 118008333.0);
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), 118008000.0);
}

TEST_F(AnInputAssignmentEditor, SetsWhatIsShownWhereAProgramSetsItAgain) {
    const auto module = Make();
    module->SetFrequency(2, 118008333.0);
    Open({module.get()});
    Table().item(0, 2)->setText(Text("118.008"));
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), 118008000.0);
}

TEST_F(AnInputAssignmentEditor, KeepsTheHertzOfACellThatWasOpenedAndLeftWithoutAKey) {
    const auto module = Make();
    module->SetFrequency(2, 118008333.0);
    Open({module.get()});
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}) {
        QLineEdit* const field = OpenCell(0, 2);
        ASSERT_NE(field, nullptr);
        QTest::keyClick(field, key);
        RunTurns(2);
    }
    Click("ok");
    EXPECT_EQ(module->GetFrequency(2), 118008333.0);
}

TEST_F(AnInputAssignmentEditor, TakesOverACellThatSomebodyPutInPlaceOfItsOwn) {
    const auto module = Make();
    Open({module.get()});
    Table().setItem(0, 2, new QTableWidgetItem(Text("118.1")));
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), First);
}

TEST_F(AnInputAssignmentEditor, TakesEachEntryOverOnce) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 2, Text("118,1"));
    Click("apply");
    module->SetFrequency(2, Second);
    Click("apply");
    EXPECT_EQ(module->GetFrequency(2), Second);
}

TEST_F(AnInputAssignmentEditor, MarksANegativeFrequencyAlsoWhenItIsOpenedAgain) {
    const auto module = Make();
    module->SetFrequency(2, -5e6);
    Open({module.get()});
    EXPECT_FALSE(Table().item(0, 2)->icon().isNull());
    Click("apply");
    EXPECT_FALSE(Table().item(0, 2)->icon().isNull());
}

TEST_F(AnInputAssignmentEditor, TakesAMarkAwayOnceTheTextIsRight) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 2, Text("x"));
    Click("apply");
    Enter(0, 2, Text("118.1"));
    Click("apply");
    EXPECT_TRUE(Table().item(0, 2)->icon().isNull());
}

TEST_F(AnInputAssignmentEditor, ReadsOnlyCellsThatAreThere) {
    const auto module = Make();
    module->SetFrequency(2, Second);
    module->SetFrequency(3, First);
    Open({module.get()});
    delete Table().takeItem(0, 2);  // no cell: nothing is read
    Enter(0, 3, QString());
    Click("ok");
    EXPECT_EQ(module->GetFrequency(2), Second);
    EXPECT_EQ(module->GetFrequency(3), 0.0);
}

TEST_F(AnInputAssignmentEditor, AppliesAndClosesByOk) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 0, Text("118.1"));
    Click("ok");
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
    EXPECT_FALSE(m_editor->isVisible());
    EXPECT_EQ(module->GetFrequency(0), First);
}

TEST_F(AnInputAssignmentEditor, ChangesNothingByCancelOrEscape) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 0, Text("118.1"));
    Click("cancel");
    EXPECT_EQ(m_editor->result(), QDialog::Rejected);
    EXPECT_EQ(module->GetFrequency(0), 0.0);
    Open({module.get()});
    Enter(0, 0, Text("118.1"));
    QTest::keyClick(m_editor.get(), Qt::Key_Escape);
    EXPECT_FALSE(m_editor->isVisible());
    EXPECT_EQ(module->GetFrequency(0), 0.0);
}

TEST_F(AnInputAssignmentEditor, BlanksNewAssignmentsAtOnce) {
    const auto module = MakeConnected(0);
    Open({module.get()});
    EXPECT_FALSE(IsBlanked(128003000.0));
    Enter(0, 1, Text("128.003"));
    Click("apply");
    EXPECT_TRUE(IsBlanked(128003000.0));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_FALSE(IsBlanked(Second));
}

TEST_F(AnInputAssignmentEditor, KeepsEveryWholeKilohertz) {
    const auto module = Make();
    Open({module.get()});
    for (int kilohertz = 108000; kilohertz < 137000; ++kilohertz) {
        Table().item(0, 0)->setText(
            Text("%1.%2").arg(kilohertz / 1000).arg(kilohertz % 1000, 3, 10, QLatin1Char('0')));
        m_editor->SlotApply();
        ASSERT_EQ(module->GetFrequency(0), kilohertz * 1000.0);
    }
}

TEST_F(AnInputAssignmentEditor, SurvivesAModuleThatIsDeleted) {
    auto first = Make(0);
    const auto second = Make(1);
    Open({first.get(), second.get()});
    first.reset();
    Enter(1, 0, Text("118.1"));
    Click("ok");
    EXPECT_EQ(second->GetFrequency(0), First);
}

TEST_F(AnInputAssignmentEditor, IsEditedByKeyboardAlone) {
    const auto module = Make();
    Open({module.get()});
    Table().setFocus();
    Table().setCurrentCell(0, 0);
    QTest::keyClick(&Table(), Qt::Key_Right);
    QTest::keyClicks(&Table(), Text("1"));
    auto* const field = Table().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, Text("18.1"));
    QTest::keyClick(field, Qt::Key_Return);
    RunTurns(2);
    QTest::keyClick(m_editor->findChild<QPushButton*>(Text("ok")), Qt::Key_Space);
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
    EXPECT_EQ(module->GetFrequency(1), First);
}

TEST_F(AnInputAssignmentEditor, KeepsWhatTheConfigurationRoundsToWholeHertz) {
    const auto module = Make();
    Open({module.get()});
    Enter(0, 0, Text("118.0083335"));
    Click("ok");
    EXPECT_EQ(module->GetFrequency(0), 118008333.5);
    FakeCfg section;
    module->SaveAssignments(section);
    EXPECT_EQ(section.Content(Text("Assignments/DI_0")), Text("118008334"));
}

class ADoubtfulFrequency : public AnInputAssignmentEditor {
  protected:
    ADoubtfulFrequency() : m_module(Make()) {
        Open({m_module.get()});
        m_editor->SetFrequencyRange({300000.0, 3000000000.0});
    }
    /// What is said below the table; empty if there is nothing.
    QString Remark() {
        const auto* const remark = m_editor->findChild<QWidget*>(Text("remark"));
        return remark != nullptr && remark->isVisible() ? remark->accessibleName() : QString();
    }

    const std::unique_ptr<DataModule> m_module;
};

struct DoubtRow {
    const char* name;
    const char* entered;
    const char* doubt;
};

void PrintTo(const DoubtRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const DoubtRow doubtRows[] = {
    {"InTheRange",    "118.1",     ""},
    {"TheLeast",      "0.3",       ""},
    {"TheMost",       "3000",      ""},
    {"Nothing",       "",          ""},
    {"Zero",          "0",         ""},
    {"TooLittle",     "0,299",     "0.299 MHz lies outside 0.3 to 3000 MHz: it will never blank"},
    {"FarTooMuch",    "5e12",      "5e12 MHz lies outside 0.3 to 3000 MHz: it will never blank"},
    {"InKilohertz",   "118400",    "118400 MHz lies outside 0.3 to 3000 MHz: it will never blank (for 118.4 MHz, enter 118.4)"},
    {"InHertz",       "121500000", "121500000 MHz lies outside 0.3 to 3000 MHz: it will never blank (for 121.5 MHz, enter 121.5)"},
    {"ANegativeOne",  "-118.1",    "-118.1 MHz is less than nothing: it will never blank"},
    {"AWord",         "tower",     "\"tower\" is no number of MHz: nothing will be assigned to the input"},
    {"AUnit",         "118.1 MHz", "\"118.1 MHz\" is no number of MHz: nothing will be assigned to the input"},
    {"ALongText",     "aaaaaaaaaabbbbbbbbbbccccccccccdddddddddd",
                      "\"aaaaaaaaaabbbbbbbbbbcccc\xe2\x80\xa6\" is no number of MHz: nothing will be assigned to the input"},
};
// clang-format on

class ADoubt : public ADoubtfulFrequency, public testing::WithParamInterface<DoubtRow> {};

TEST_P(ADoubt, IsSaidBeforeTheCellIsTakenOver) {
    const QString doubt = Text(GetParam().doubt);
    Enter(0, 4, Text(GetParam().entered));
    EXPECT_EQ(Table().item(0, 4)->toolTip(), doubt);
    EXPECT_EQ(Table().item(0, 4)->icon().isNull(), doubt.isEmpty());
    EXPECT_EQ(Remark(), doubt.isEmpty() ? QString() : Text("ADAM-6051-1, DI 4: ") + doubt);
    EXPECT_EQ(m_module->GetFrequency(4), 0.0);
}

INSTANTIATE_TEST_SUITE_P(Table, ADoubt, testing::ValuesIn(doubtRows), testing::PrintToStringParamName());

TEST_F(ADoubtfulFrequency, IsSaidWhileItIsTyped) {
    QLineEdit* const field = OpenCell(0, 4);
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, Text("1184"));
    EXPECT_EQ(Remark(), QString());
    QTest::keyClicks(field, Text("00"));
    EXPECT_EQ(Remark(),
              Text("ADAM-6051-1, DI 4: 118400 MHz lies outside 0.3 to 3000 MHz: it will never blank (for "
                   "118.4 MHz, enter 118.4)"));
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Backspace);
    EXPECT_EQ(Remark(), QString());
}

TEST_F(ADoubtfulFrequency, IsTakenAllTheSameAndStaysMarked) {
    Enter(0, 4, Text("5000000"));
    Click("apply");
    EXPECT_EQ(m_module->GetFrequency(4), 5e12);
    EXPECT_EQ(CellText(0, 4), Text("5000000"));
    EXPECT_FALSE(Table().item(0, 4)->icon().isNull());
    EXPECT_TRUE(Remark().contains(Text("lies outside")));
    Enter(0, 4, Text("118.1"));
    EXPECT_TRUE(Table().item(0, 4)->icon().isNull());
    EXPECT_EQ(Remark(), QString());
}

TEST_F(ADoubtfulFrequency, IsMarkedWhenItWasAssignedBefore) {
    m_module->SetFrequency(7, 5e12);
    Open({m_module.get()});
    EXPECT_EQ(Remark(), QString());  // nobody knows a range
    m_editor->SetFrequencyRange({300000.0, 3000000000.0});
    EXPECT_EQ(Table().item(0, 7)->toolTip(),
              Text("5000000.000 MHz lies outside 0.3 to 3000 MHz: it will never blank (for 5 MHz, enter 5)"));
}

TEST_F(ADoubtfulFrequency, IsSaidOfTheCurrentCellFirst) {
    Enter(0, 4, Text("x"));
    Enter(0, 2, Text("y"));
    EXPECT_TRUE(Remark().startsWith(Text("ADAM-6051-1, DI 2: ")));
    Table().setCurrentCell(0, 4);
    EXPECT_TRUE(Remark().startsWith(Text("ADAM-6051-1, DI 4: ")));
    Table().setCurrentCell(0, 0);
    EXPECT_TRUE(Remark().startsWith(Text("ADAM-6051-1, DI 2: ")));
}

}  // namespace
