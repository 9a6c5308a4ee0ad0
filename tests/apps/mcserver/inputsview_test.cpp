// SPDX-License-Identifier: Apache-2.0
// The table of inputs in the server's window, by mouse and keyboard, with a module that is a program.
#include <apps/mcserver/suppression/inputcells.h>

#include <tests/apps/mcserver/inputsviewfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeWidget>

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class AnInputsView : public InputsViewTest {};

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
                                         Frequency{"Nothing", "", 0.0, ""}),
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
        Refused{"Zero", InputModel::Frequency, "0", "\"0\" is no frequency"},
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

TEST_F(AnInputsView, PointsOutAnAddressThatAnotherModuleHas) {
    Show();
    Enter(0, InputModel::Address, "127.0.0.2");
    EXPECT_EQ(Notice(), "");
    Enter(12, InputModel::Address, "127.0.0.2");
    EXPECT_EQ(Settings(1).address, QStringLiteral("127.0.0.2"));
    EXPECT_EQ(Notice(), "Taken. ADAM-6060 7 and ADAM-6051 1 have one address: both read the same inputs");
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

TEST_F(AnInputsView, CallsAnInputUnsupervisedAlsoWhereAnotherModuleHasItsFrequency) {
    ASSERT_NO_FATAL_FAILURE(ShowWithModule());
    ASSERT_TRUE(WaitUntil([&] { return TextAt(12, InputModel::State) == QStringLiteral("\u25cb silent"); }));
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6060-6"), 0, 121.5e6);
    m_display->GetPlant().SetAddress(QStringLiteral("ADAM-6051-0"), QStringLiteral("256.0.0.1"));
    EXPECT_TRUE(
        WaitUntil([&] { return TextAt(3, InputModel::State) == QStringLiteral("\u2715 not supervised"); }));
    EXPECT_EQ(TextAt(12, InputModel::State), QStringLiteral("\u25cb silent")) << "that one is read";
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
