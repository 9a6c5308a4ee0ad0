// SPDX-License-Identifier: Apache-2.0
// The bar that tunes an MpxORV, by keys and clicks.
#include <apps/common/codedtext.h>

#include <tests/apps/mcconsole/tunebarfixture.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtCore/QLocale>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST_F(TuneBarTest, ShowsWhatThereIsUntilSomethingIsEntered) {
    EXPECT_EQ(Field()->text(), QStringLiteral("30.000 MHz"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    EXPECT_EQ(Mark(), QString());
    EXPECT_FALSE(HasMarkIcon());
    EXPECT_FALSE(HasRedFrame());
}

/// What is answered to somebody who wants no frequency.
class AnyAnswer : public TuneBarTest, public testing::WithParamInterface<const char*> {};

TEST_P(AnyAnswer, OffersNoFrequencyThatNobodyHasAskedFor) {
    tuning.Bind(QString());
    answer->SetValue(QString());
    tuning.Bind(QStringLiteral("/Mine"));
    answer->SetValue(QString::fromLatin1(GetParam()));
    EXPECT_EQ(Field()->text(), QString());
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    EXPECT_FALSE(HasRedFrame()) << "nothing is wrong yet";
    Press(Qt::Key_Return);
    Press(Qt::Key_Up);
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
    Type("1");
    Press(Qt::Key_Backspace);
    EXPECT_TRUE(HasRedFrame());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(HasRedFrame());
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, AnyAnswer,
                         testing::Values("", "done: is master", "refused: Van is master since 14:03:22",
                                         "ended: the right MayCal, taken away by Van"));

TEST_F(TuneBarTest, TakesWhatIsTypedDuringALossAndDoesNotSendIt) {
    tuning.Bind(QString());
    Type("121.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.5"));
    tuning.Bind(QStringLiteral("/Mine"));
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
    EXPECT_EQ(Field()->text(), QStringLiteral("121.5"));
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
}

TEST_F(TuneBarTest, IsWalkedThroughAsItStands) {
    QStringList names;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names += QApplication::focusWidget()->objectName();
    }
    EXPECT_THAT(names,
                ElementsAre(QStringLiteral("RecentFrequencies"), QStringLiteral("FavouriteFrequencies"),
                            QStringLiteral("Step"), QStringLiteral("Tune")));
}

TEST_F(TuneBarTest, EnterAsksOnce) {
    Type("121.5");
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(121.5));
    EXPECT_EQ(Mark(), QStringLiteral("Asked for"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    Grant();
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Field()->selectedText(), Field()->text());
}

TEST_F(TuneBarTest, TheButtonAsksOnceAndLeavesTheFieldTheFocus) {
    Type("118400 kHz");
    ClickTune();
    EXPECT_THAT(Asked(), ElementsAre(118.4));
    EXPECT_TRUE(Field()->hasFocus());
}

TEST_F(TuneBarTest, WhatAssistiveTechnologyWritesIsWhatTuneAsksFor) {
    spoken::Write(*Field(), QStringLiteral("118400 kHz"));
    EXPECT_EQ(Text("Understood"), QStringLiteral("= 118.400 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_THAT(Asked(), IsEmpty());
    spoken::Press(*bar.findChild<QPushButton*>(QStringLiteral("Tune")));
    EXPECT_TRUE(WaitUntil([this] { return !Asked().empty(); }));
    EXPECT_THAT(Asked(), ElementsAre(118.4));
}

TEST_F(TuneBarTest, AsksOnceMoreForWhatItHas) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    Press(Qt::Key_Enter);
    ClickTune();
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5, 121.5));
}

TEST_F(TuneBarTest, SaysBesideTheFieldWhatItUnderstands) {
    Type("118400 kHz");
    EXPECT_EQ(Text("Understood"), QStringLiteral("= 118.400 MHz"));
    Type("121500000");
    EXPECT_EQ(Text("Understood"), QStringLiteral("= 121.500 MHz"));
    Type("121,5");
    EXPECT_EQ(Text("Understood"), QStringLiteral("= 121.500 MHz"));
    Type("abc");
    EXPECT_EQ(Text("Understood"), QString());
}

TEST_F(TuneBarTest, TellsHowPlainNumbersAreTaken) {
    EXPECT_TRUE(Field()->toolTip().contains(QLatin1String("30,000")));
}

TEST_F(TuneBarTest, MarksWhatIsNotSent) {
    Type("121.5");
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_TRUE(HasMarkIcon());
    EXPECT_FALSE(HasRedFrame());
    EXPECT_FALSE(Text("TuneMessage").isEmpty());
    QTest::keyClick(Field(), Qt::Key_Tab);
    EXPECT_FALSE(Field()->hasFocus());
    clock.Advance(1h);
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_THAT(Asked(), IsEmpty());
}

struct WrongRow {
    const char* name;
    const char* typed;
    const char* mark;
    const char* message;
};

class WrongEntryTest : public TuneBarTest, public testing::WithParamInterface<WrongRow> {};

TEST_P(WrongEntryTest, IsToldInRedAndNotSent) {
    if (*GetParam().typed == '\0') {
        Field()->selectAll();
        Press(Qt::Key_Delete);
    } else {
        Type(GetParam().typed);
    }
    EXPECT_TRUE(HasRedFrame());
    EXPECT_TRUE(HasMarkIcon());
    EXPECT_EQ(Mark(), QLatin1String(GetParam().mark));
    EXPECT_EQ(Text("TuneMessage"), QLatin1String(GetParam().message));
    EXPECT_EQ(Field()->accessibleDescription(), QLatin1String(GetParam().message));
    Press(Qt::Key_Return);
    ClickTune();
    Press(Qt::Key_Tab);
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
    EXPECT_EQ(Field()->text(), QLatin1String(GetParam().typed));
}

INSTANTIATE_TEST_SUITE_P(
    , WrongEntryTest,
    testing::Values(
        WrongRow{"Letters", "abc", "No frequency",
                 "\"abc\" is no frequency. Enter one such as 121.5, 118400 kHz or 121500000."},
        WrongRow{"Nothing", "", "No frequency", "Enter a frequency, such as 121.5, 118400 kHz or 121500000."},
        WrongRow{"AboveTheRange", "5000", "Out of range",
                 "5000.000 MHz lies outside the range of the device, 0.3 to 3000 MHz: nothing is asked for."},
        WrongRow{"BelowTheRange", "299 kHz", "Out of range",
                 "0.299 MHz lies outside the range of the device, 0.3 to 3000 MHz: nothing is asked for."},
        WrongRow{"Negative", "-5", "Out of range",
                 "-5 lies outside the range of the device, 0.3 to 3000 MHz: nothing is asked for."},
        WrongRow{"Overflow", "1e999", "Out of range",
                 "1e999 lies outside the range of the device, 0.3 to 3000 MHz: nothing is asked for."}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(TuneBarTest, KeepsTheLimitsOfTheRangeItself) {
    Type("3 GHz");
    Press(Qt::Key_Return);
    Type("300 kHz");
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(3000, 0.3));
}

TEST_F(TuneBarTest, HundredsOfDigitsAreToldInShort) {
    Type(std::string(300, '9').c_str());
    EXPECT_TRUE(Text("Understood").startsWith(QLatin1String("= ")));
    EXPECT_LE(Text("Understood").size(), 40) << "the field would have no room";
    EXPECT_LE(Text("TuneMessage").size(), 150);
    EXPECT_EQ(Text("TuneMark"), QStringLiteral("Out of range"));
}

TEST_F(TuneBarTest, FollowsTheRangeThatTheServerTells) {
    Type("5000");
    frequency->SetMax(6e9);
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_FALSE(HasRedFrame());
}

TEST_F(TuneBarTest, KeepsWhatIsWantedThroughARefusalAndAsksForItAgain) {
    Type("121.5");
    Press(Qt::Key_Return);
    Refuse("121.5 MHz is blanked by ADAM-6051 1, input 3");
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    EXPECT_EQ(Mark(), QStringLiteral("Refused"));
    EXPECT_TRUE(Text("TuneMessage").startsWith(QLatin1String("121.5 MHz is blanked by ADAM-6051 1, input 3")))
        << Text("TuneMessage").toStdString();
    ClickTune();
    Grant();
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
}

TEST_F(TuneBarTest, ShowsWhatItStaysTunedToBesideWhatWasRefused) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    Type("127.5");
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    Refuse("no");
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Field()->text(), QStringLiteral("127.500 MHz"));
}

TEST_F(TuneBarTest, OfSeveralRequestsTheAnswerToTheLastCounts) {
    Type("121.5");
    Press(Qt::Key_Return);
    Type("127.5");
    Press(Qt::Key_Return);
    granted = 121.5e6;
    mode->Select(OperationFfm);
    answer->SetValue(QStringLiteral("done: tuned to 121.5 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Asked for"));
    Refuse("no");
    EXPECT_EQ(Mark(), QStringLiteral("Refused"));
    EXPECT_EQ(Field()->text(), QStringLiteral("127.500 MHz"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
}

TEST_F(TuneBarTest, ShowsAnAccessThatIsRefusedWithItsReason) {
    Type("121.5");
    Press(Qt::Key_Return);
    frequency->SetValue(30e6, &server);
    values::Refusals::Instance().Report(frequency, QStringLiteral("/Mine/Request/Frequency"),
                                        QStringLiteral("role guest"));
    EXPECT_EQ(Mark(), QStringLiteral("Refused"));
    EXPECT_TRUE(Text("TuneMessage").startsWith(QLatin1String("role guest")));
}

TEST_F(TuneBarTest, SaysWhyAFrequencyWasTakenAway) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    End("the ORV is not connected");
    EXPECT_EQ(Mark(), QStringLiteral("Taken away"));
    EXPECT_EQ(Text("TuneMessage"), QStringLiteral("the ORV is not connected"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    ClickTune();
    Grant();
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
}

TEST_F(TuneBarTest, TakingBackAnEntryDoesNotHideThatTheFrequencyWasTakenAway) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    End("the ORV is not connected");
    Type("127");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Mark(), QStringLiteral("Taken away"));
    EXPECT_EQ(Text("TuneMessage"), QStringLiteral("the ORV is not connected"));
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    Press(Qt::Key_Return);
    Grant();
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
}

TEST_F(TuneBarTest, WhatIsNotAnsweredYetIsShownBesideWhatIsTypedSince) {
    Type("121.5");
    Press(Qt::Key_Return);
    Type("127");
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_EQ(Text("TuneMessage"), QStringLiteral("121.500 MHz is asked for and not answered yet. Enter or "
                                                  "\"Tune\" asks for it, Escape takes it back."));
    Grant();
    EXPECT_EQ(Text("TuneMessage"), QStringLiteral("Enter or \"Tune\" asks for it, Escape takes it back."));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Field()->text(), QStringLiteral("127"));
}

TEST_F(TuneBarTest, WhatIsTypedStaysMarkedWhenSomethingIsTakenAway) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    Type("127");
    End("the right MayCal, taken away by Tower");
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_EQ(Field()->text(), QStringLiteral("127"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
}

TEST_F(TuneBarTest, GivesTheReasonInTheWordsOfTheWindow) {
    auto* const code = new values::Value<QString>;
    code->SetName(QStringLiteral("AnswerCode"));
    tree.AddValue(QStringLiteral("/Mine/Request"), code);
    const CodedText refused(ECode::Refused,
                            {CodedText(ECode::NeedsPolicy, {QStringLiteral("MayCal"), CodedText()})});
    Type("121.5");
    Press(Qt::Key_Return);
    code->SetValue(refused.ToJsonText());
    Refuse("needs MayCal");
    // Policies are called as their boxes are.
    EXPECT_TRUE(Text("TuneMessage").startsWith(QStringLiteral("needs \"May calibrate\"")))
        << Text("TuneMessage").toStdString();

    Press(Qt::Key_Return);
    Refuse("something that no code says");
    EXPECT_TRUE(Text("TuneMessage").startsWith(QStringLiteral("something that no code says")))
        << Text("TuneMessage").toStdString();
}

TEST_F(TuneBarTest, IsNotConcernedByOtherAnswers) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    answer->SetValue(QStringLiteral("refused: needs MayBIT"));
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
    EXPECT_EQ(Text("TuneMessage"), QString());
}

TEST_F(TuneBarTest, EscapeTakesBackAndSelectsAll) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    Type("abc");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Field()->selectedText(), Field()->text());
    EXPECT_EQ(Mark(), QStringLiteral("Tuned"));
    EXPECT_FALSE(HasRedFrame());
    EXPECT_THAT(Asked(), ElementsAre(121.5));
}

TEST_F(TuneBarTest, EscapeTakesBackWhatWasRefused) {
    Type("121.5");
    Press(Qt::Key_Return);
    Refuse("no");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Field()->text(), QStringLiteral("30.000 MHz"));
    EXPECT_EQ(Mark(), QString());
    EXPECT_EQ(Text("TuneMessage"), QString());
}

TEST_F(TuneBarTest, FollowsWhoElseTunesTheMpxOrvWhileNothingIsEntered) {
    frequency->SetValue(98.5e6, &server);
    mode->Select(OperationFfm);
    EXPECT_EQ(Field()->text(), QStringLiteral("98.500 MHz"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("98.500 MHz"));
    Type("12");
    frequency->SetValue(99e6, &server);
    EXPECT_EQ(Field()->text(), QStringLiteral("12"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("99.000 MHz"));
}

TEST_F(TuneBarTest, CannotBeUsedWithoutAnMpxOrv) {
    tuning.Bind(QString());
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("- - -"));
    EXPECT_EQ(Field()->text(), QString());
    EXPECT_FALSE(bar.findChild<QPushButton*>(QStringLiteral("Tune"))->isEnabled());
    EXPECT_EQ(Mark(), QString());
    Press(Qt::Key_Return);
    Press(Qt::Key_Up);
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(TuneBarTest, SaysThatThisUserMayNotTune) {
    frequency->SetWritable(false);
    EXPECT_TRUE(Field()->isReadOnly());
    EXPECT_EQ(Mark(), QStringLiteral("Locked"));
    EXPECT_EQ(Text("TuneMessage"), QStringLiteral("This user may not tune here."));
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(TuneBarTest, WhatWasAskedForIsWantedOfTheNextMpxOrvAndNotSentToIt) {
    Type("121.5");
    Press(Qt::Key_Return);
    Grant();
    tuning.Bind(QString());
    tree.Delete(tree.FindItem(QStringLiteral("/Mine")));
    MakeMpxOrv();
    tuning.Bind(QStringLiteral("/Mine"));
    clock.Advance(1h);
    EXPECT_THAT(Asked(), ElementsAre(121.5));
    EXPECT_EQ(Field()->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    EXPECT_EQ(Text("TunedTo"), QStringLiteral("NOT TUNED"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Field()->text(), QString()) << "what the next one begins with is nobody's wish either";
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(121.5));
}

TEST_F(TuneBarTest, IsReadAndWrittenInTheLocale) {
    QLocale::setDefault(QLocale(QStringLiteral("de")));
    Type("121.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(Field()->text(), QStringLiteral("121,500 MHz"));
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
    QLocale::setDefault(QLocale::c());
}

}  // namespace
