// SPDX-License-Identifier: Apache-2.0
// Steps from one channel to the next, by keys, buttons and the wheel.
#include <tests/apps/mcconsole/tunebarfixture.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST_F(TuneBarTest, StepsAreSentOnceAfterARest) {
    Ask("121.5");
    for (int i = 0; i < 4; ++i) {
        Press(Qt::Key_Up);
        clock.Advance(299ms);
    }
    EXPECT_EQ(Field()->text(), QStringLiteral("121.600 MHz"));
    EXPECT_EQ(Mark(), QStringLiteral("Not sent yet"));
    EXPECT_THAT(Asked(), IsEmpty());
    clock.Advance(1ms);
    EXPECT_THAT(Asked(), ElementsAre(121.6));
    clock.Advance(1h);
    EXPECT_THAT(Asked(), ElementsAre(121.6));
}

struct StepRow {
    const char* name;
    const char* step;
    const char* from;
    int count;
    const char* to;
};

class StepTest : public TuneBarTest, public testing::WithParamInterface<StepRow> {};

TEST_P(StepTest, LeadsToTheNextChannel) {
    ChooseStep(GetParam().step);
    Type(GetParam().from);
    for (int i = 0; i < qAbs(GetParam().count); ++i)
        Press(GetParam().count < 0 ? Qt::Key_Down : Qt::Key_Up);
    EXPECT_EQ(Field()->text(), QLatin1String(GetParam().to));
}

INSTANTIATE_TEST_SUITE_P(, StepTest,
                         testing::Values(StepRow{"FiveKilohertz", "5 kHz", "118", 1, "118.005 MHz"},
                                         StepRow{"AThirdOf25", "8.33 kHz", "118", 1, "118.008333 MHz"},
                                         StepRow{"TwoThirdsOf25", "8.33 kHz", "118", 2, "118.016667 MHz"},
                                         StepRow{"ThreeThirdsOf25", "8.33 kHz", "118", 3, "118.025 MHz"},
                                         StepRow{"ManyThirds", "8.33 kHz", "118", 30, "118.250 MHz"},
                                         StepRow{"ThirdsDown", "8.33 kHz", "118.025", -3, "118.000 MHz"},
                                         StepRow{"ThirdFromBetween", "8.33 kHz", "118.001", 1,
                                                 "118.009333 MHz"},
                                         StepRow{"TwentyFive", "25 kHz", "121.5", -1, "121.475 MHz"},
                                         StepRow{"Hundred", "100 kHz", "121.5", 1, "121.600 MHz"},
                                         StepRow{"Megahertz", "1 MHz", "121.5", -2, "119.500 MHz"},
                                         StepRow{"NotBeyondTheRange", "1 MHz", "2999", 5, "3000.000 MHz"},
                                         StepRow{"NotBelowTheRange", "1 MHz", "1.5", -5, "0.500 MHz"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TuneBarTest, StepsByButtonsAndLeavesTheFieldTheFocus) {
    Ask("121.5");
    ClickStep("StepUp");
    ClickStep("StepUp");
    ClickStep("StepDown");
    EXPECT_EQ(Field()->text(), QStringLiteral("121.525 MHz"));
    EXPECT_TRUE(Field()->hasFocus());
    clock.Advance(Tuning::Rest);
    EXPECT_THAT(Asked(), ElementsAre(121.525));
}

TEST_F(TuneBarTest, StepsByTheWheelOverTheFocusedFieldOnly) {
    Ask("121.5");
    Turn(120);
    Turn(60);  // half a step
    EXPECT_EQ(Field()->text(), QStringLiteral("121.525 MHz"));
    Turn(60);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.550 MHz"));
    EXPECT_THAT(Asked(), IsEmpty());
    Field()->clearFocus();
    Turn(-120);
    EXPECT_EQ(Field()->text(), QStringLiteral("121.550 MHz"));
    clock.Advance(Tuning::Rest);
    EXPECT_THAT(Asked(), ElementsAre(121.55));
}

TEST_F(TuneBarTest, WhatIsTypedAfterAStepWaitsForEnter) {
    Ask("121.5");
    Press(Qt::Key_Up);
    Type("127");
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
    EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
}

TEST_F(TuneBarTest, AStepFromWhatIsTypedWaitsForEnterToo) {
    for (const char* const typed : {"13", "121.5"}) {
        Type(typed);
        Turn(120);
        Press(Qt::Key_Up);
        ClickStep("StepUp");
        clock.Advance(1h);
        EXPECT_THAT(Asked(), IsEmpty()) << typed << ": somebody was still typing";
        EXPECT_EQ(Mark(), QStringLiteral("Not sent"));
    }
    EXPECT_EQ(Field()->text(), QStringLiteral("121.575 MHz"));
    Press(Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(121.575));
    Grant();
    Press(Qt::Key_Up);
    clock.Advance(Tuning::Rest);
    EXPECT_THAT(Asked(), ElementsAre(121.575, 121.6));
}

TEST_F(TuneBarTest, AButtonThatIsHeldDownStepsNoMoreOnceItIsHidden) {
    Ask("121.5");
    auto* const up = bar.findChild<QToolButton*>(QStringLiteral("StepUp"));
    QTest::mousePress(up, Qt::LeftButton);
    EXPECT_TRUE(up->isDown());
    bar.hide();
    EXPECT_FALSE(up->isDown());
}

TEST_F(TuneBarTest, TheWheelChoosesNoStepWithoutTheFocus) {
    auto* const step = bar.findChild<QComboBox*>(QStringLiteral("Step"));
    const int before = step->currentIndex();
    QWheelEvent event(QPointF(5, 5), step->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(step, &event);
    EXPECT_EQ(step->currentIndex(), before);
    step->setFocus();
    QApplication::sendEvent(step, &event);
    EXPECT_NE(step->currentIndex(), before);
}

TEST_F(TuneBarTest, EscapeTakesBackStepsThatDoNotRestYet) {
    Press(Qt::Key_Up);
    Press(Qt::Key_Escape);
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
    EXPECT_EQ(Field()->text(), QStringLiteral("30.000 MHz"));
}

TEST_F(TuneBarTest, DoesNotStepFromWhatIsNoFrequency) {
    Type("abc");
    Press(Qt::Key_Up);
    clock.Advance(1h);
    EXPECT_EQ(Field()->text(), QStringLiteral("abc"));
    EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(TuneBarTest, StepsThatDoNotRestYetAreNotSentToAnotherMpxOrv) {
    Press(Qt::Key_Up);
    tuning.Bind(QString());
    tuning.Bind(QStringLiteral("/Mine"));
    clock.Advance(1h);
    EXPECT_THAT(Asked(), IsEmpty());
}

}  // namespace
