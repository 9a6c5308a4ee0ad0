// SPDX-License-Identifier: Apache-2.0
// What was granted last, and favourites, beside the frequency field; by mouse and keys.
#include <apps/common/codedtext.h>
#include <apps/mcconsole/tune/favouritesdialog.h>
#include <apps/mcconsole/tune/frequencypicker.h>

#include <tests/apps/mcconsole/tunebarfixture.h>

#include <gmock/gmock.h>

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTableView>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FrequencyPickerTest : public TuneBarTest {
  protected:
    void AskFor(const char* text) {
        Type(text);
        Press(Qt::Key_Return);
    }
    void HaveGranted(const char* text) {
        AskFor(text);
        Grant();
    }

    /// The menu that is open.
    static QMenu* Menu() {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        return menu;
    }
    QMenu* Open(const char* button) {
        QTest::mouseClick(bar.findChild<QToolButton*>(QString::fromLatin1(button)), Qt::LeftButton);
        return Menu();
    }
    static std::vector<std::string> Choices(const QMenu& menu) {
        std::vector<std::string> texts;
        for (const QAction* const action : menu.actions()) {
            if (action->isSeparator()) break;
            texts.push_back(action->text().toStdString() + (action->isEnabled() ? "" : " -"));
        }
        return texts;
    }
    std::vector<std::string> Recent() {
        QMenu* const menu = Open("RecentFrequencies");
        const std::vector<std::string> choices = Choices(*menu);
        menu->close();
        return choices;
    }
    static void ClickChoice(QMenu& menu, int index) {
        QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                          menu.actionGeometry(menu.actions().at(index)).center());
    }

    FavouritesDialog* Dialog() const {
        auto* const dialog = bar.findChild<FavouritesDialog*>();
        EXPECT_NE(dialog, nullptr);
        QApplication::setActiveWindow(dialog);
        return dialog;
    }
    QTableView* Table() const { return Dialog()->findChild<QTableView*>(); }
    void Click(const char* button) {
        QTest::mouseClick(Dialog()->findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
    }
    void ChooseRow(int row) { Table()->selectRow(row); }
    void TypeName(const char* text) {
        Dialog();
        auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromLatin1(text));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();  // the editor goes
    }
    void End(QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(Dialog()->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
    std::vector<std::string> Favourites() const {
        std::vector<std::string> texts;
        for (const FrequencyBook::Favourite& favourite : book.GetFavourites())
            texts.push_back(favourite.name.toStdString() + '=' + Tuning::Shown(favourite.hz).toStdString());
        return texts;
    }
    void HaveFavourites() {
        book.SetFavourites(
            {{QStringLiteral("Tower"), 118.4e6}, {QStringLiteral("R&D"), 243e6}, {QString(), 121.5e6}});
    }
};

TEST_F(FrequencyPickerTest, OffersWhatWasGrantedTheLastOneFirst) {
    EXPECT_THAT(Recent(), ElementsAre("None was granted yet -"));
    HaveGranted("121.5");
    HaveGranted("127500 kHz");
    EXPECT_THAT(Recent(), ElementsAre("&1  127.500 MHz", "&2  121.500 MHz"));
}

TEST_F(FrequencyPickerTest, DoesNotOfferWhatWasRefusedOrNotAnswered) {
    AskFor("121.5");
    EXPECT_THAT(book.GetRecent(), IsEmpty());
    Refuse("needs MayAlterFreqSingle");
    EXPECT_THAT(book.GetRecent(), IsEmpty());
}

TEST_F(FrequencyPickerTest, TakesOnlyItsOwnAnswersForGranted) {
    auto* const code = new values::Value<QString>;
    code->SetName(QStringLiteral("AnswerCode"));
    tree.AddValue(QStringLiteral("/Mine/Request"), code);
    const auto say = [&](const CodedText& said) {
        code->SetValue(said.ToJsonText());
        answer->SetValue(said.ToEnglish());
    };
    AskFor("121.5");
    say({ECode::Done, {CodedText(ECode::IsMasterNow)}});
    EXPECT_EQ(Mark(), QStringLiteral("Asked for"));
    EXPECT_THAT(book.GetRecent(), IsEmpty());
    say({ECode::Done, {CodedText(ECode::TunedTo, {QStringLiteral("121.5 MHz")})}});
    EXPECT_THAT(book.GetRecent(), ElementsAre(121.5e6));
}

TEST_F(FrequencyPickerTest, SeesThatARefusalWasOfAnotherRequest) {
    auto* const code = new values::Value<QString>;
    code->SetName(QStringLiteral("AnswerCode"));
    tree.AddValue(QStringLiteral("/Mine/Request"), code);
    AskFor("121.5");
    answer->SetValue(QStringLiteral("refused: Tower is master since 14:03:21"));
    const CodedText done(ECode::Done, {CodedText(ECode::TunedTo, {QStringLiteral("121.5 MHz")})});
    code->SetValue(done.ToJsonText());
    mode->Select(OperationFfm);
    answer->SetValue(done.ToEnglish());
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
    EXPECT_THAT(book.GetRecent(), ElementsAre(121.5e6));
}

TEST_F(FrequencyPickerTest, AClickPutsOneIntoTheFieldAndAsksForNothing) {
    HaveGranted("121.5");
    HaveGranted("127.5");
    ClickChoice(*Open("RecentFrequencies"), 1);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_TRUE(Field()->hasFocus());
    EXPECT_THAT(Asked(), ElementsAre(121.5, 127.5));
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(121.5, 127.5, 121.5));
}

TEST_F(FrequencyPickerTest, KeysChooseToo) {
    HaveGranted("121.5");
    HaveGranted("127.5");
    HaveGranted("118.4");
    bar.GetPicker().ShowRecent();
    QTest::keyClick(Menu(), Qt::Key_Down);
    QTest::keyClick(Menu(), Qt::Key_Return);
    EXPECT_EQ(Field()->text(), QStringLiteral("127.500 MHz"));
    bar.GetPicker().ShowRecent();
    QTest::keyClick(Menu(), Qt::Key_3);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    bar.GetPicker().ShowRecent();
    QTest::keyClick(Menu(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(Asked().size(), 3U);
}

TEST_F(FrequencyPickerTest, NamesFavouritesWithTheirFrequencies) {
    HaveFavourites();
    QMenu* const menu = Open("FavouriteFrequencies");
    EXPECT_THAT(Choices(*menu),
                ElementsAre("&1  Tower\t118.400 MHz", "&2  R&&D\t243.000 MHz", "&3  121.500 MHz"));
    QTest::keyClick(menu, Qt::Key_2);
    EXPECT_EQ(Field()->text(), QStringLiteral("243.000 MHz"));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(FrequencyPickerTest, SaysWhichOnesThisDeviceCannotBeTunedTo) {
    book.SetFavourites({{QStringLiteral("Far"), 4e9}});
    QMenu* const menu = Open("FavouriteFrequencies");
    EXPECT_THAT(Choices(*menu), ElementsAre("&1  Far\t4000.000 MHz (outside the range of this device) -"));
    QTest::keyClick(menu, Qt::Key_1);
    EXPECT_EQ(Field()->text(), QStringLiteral("30.000 MHz"));
    menu->close();
}

TEST_F(FrequencyPickerTest, AddsWhatIsWantedUnderAName) {
    HaveFavourites();
    Type("127.5");
    QMenu* const menu = Open("FavouriteFrequencies");
    EXPECT_EQ(menu->actions().at(4)->text(), QStringLiteral("&Add 127.500 MHz..."));
    QTest::keyClick(menu, Qt::Key_A);
    ASSERT_NO_FATAL_FAILURE(TypeName("Mast"));
    EXPECT_EQ(Favourites().size(), 3U) << "before it is confirmed";
    End(QDialogButtonBox::Save);
    EXPECT_THAT(Favourites(),
                ElementsAre("Tower=118.400 MHz", "R&D=243.000 MHz", "=121.500 MHz", "Mast=127.500 MHz"));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(FrequencyPickerTest, TakesWhatIsStillBeingTypedWhenItIsSaved) {
    bar.GetPicker().AddFavourite();
    Dialog();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Half"));
    End(QDialogButtonBox::Save);
    EXPECT_THAT(Favourites(), ElementsAre("Half=30.000 MHz"));
}

TEST_F(FrequencyPickerTest, RenamesRemovesAndOrders) {
    HaveFavourites();
    bar.GetPicker().EditFavourites();
    ChooseRow(1);
    Click("RenameFavourite");
    ASSERT_NO_FATAL_FAILURE(TypeName("Lab"));
    Click("FavouriteUp");
    ChooseRow(2);
    Click("RemoveFavourite");
    End(QDialogButtonBox::Save);
    EXPECT_THAT(Favourites(), ElementsAre("Lab=243.000 MHz", "Tower=118.400 MHz"));
}

TEST_F(FrequencyPickerTest, MovesDownToTheEnd) {
    HaveFavourites();
    bar.GetPicker().EditFavourites();
    ChooseRow(0);
    Click("FavouriteDown");
    Click("FavouriteDown");
    EXPECT_FALSE(Dialog()->findChild<QPushButton*>(QStringLiteral("FavouriteDown"))->isEnabled());
    End(QDialogButtonBox::Save);
    EXPECT_THAT(Favourites(), ElementsAre("R&D=243.000 MHz", "=121.500 MHz", "Tower=118.400 MHz"));
}

TEST_F(FrequencyPickerTest, RefusesWhatIsNoFrequencyAndSaysSo) {
    HaveFavourites();
    bar.GetPicker().EditFavourites();
    const QModelIndex cell = Table()->model()->index(0, FavouritesModel::Frequency);
    Table()->setCurrentIndex(cell);
    Table()->edit(cell);
    ASSERT_NO_FATAL_FAILURE(TypeName("12 15"));
    const auto* const problem = Dialog()->findChild<QLabel*>(QStringLiteral("FavouritesProblem"));
    EXPECT_TRUE(problem->text().startsWith(QStringLiteral("\"12 15\" is no frequency")))
        << problem->text().toStdString();
    Table()->edit(cell);
    ASSERT_NO_FATAL_FAILURE(TypeName("118,725"));
    EXPECT_EQ(problem->text(), QString());
    End(QDialogButtonBox::Save);
    EXPECT_EQ(Favourites().front(), "Tower=118.725 MHz");
}

TEST_F(FrequencyPickerTest, CancelChangesNothing) {
    HaveFavourites();
    bar.GetPicker().EditFavourites();
    Click("RemoveFavourite");
    End(QDialogButtonBox::Cancel);
    EXPECT_EQ(Favourites().size(), 3U);
}

}  // namespace
