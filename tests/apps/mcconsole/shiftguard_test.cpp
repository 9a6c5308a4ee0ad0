// SPDX-License-Identifier: Apache-2.0
// A click that was aimed at what has just moved away.
#include <apps/pages/shiftguard.h>

#include <tests/support/doubles/manualclock.h>

#include <gtest/gtest.h>

#include <QtGui/QCursor>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

using namespace std::chrono_literals;

/// A bar, and below it a page with a button, as in the programs' windows.
class ShiftGuardTest : public testing::Test {
  protected:
    ShiftGuardTest() {
        auto* const rows = new QVBoxLayout(&content);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(0);
        rows->addWidget(bar);
        rows->addWidget(pages, 1);
        bar->setFixedHeight(40);
        button->setGeometry(0, 0, 200, 40);
        guard = new ShiftGuard(clock, *pages);
        QObject::connect(button, &QPushButton::clicked, &content, [this] { ++clicks; });
        content.resize(200, 200);
        content.show();
        clock.Advance(1h);
    }

    void Aim(const QPoint& place) { QCursor::setPos(content.mapToGlobal(place)); }
    void ShowBar(bool isShown) {
        bar->setVisible(isShown);
        content.layout()->activate();
    }
    /// Where the pointer is.
    void Click() {
        const QPoint place = content.mapFromGlobal(QCursor::pos());
        QWidget* const target = content.childAt(place);
        ASSERT_NE(target, nullptr);
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->mapFrom(&content, place));
    }

    ManualClock clock;
    QWidget content;
    QLabel* bar = new QLabel(QStringLiteral("Lost"));
    QWidget* pages = new QWidget;
    QPushButton* button = new QPushButton(QStringLiteral("Tune"), pages);
    ShiftGuard* guard = nullptr;
    int clicks = 0;
};

const QPoint InTheBar(20, 20);     // and on the button once the bar is gone
const QPoint BelowTheBar(20, 60);  // on the button while the bar is there

TEST_F(ShiftGuardTest, WhatComesUnderAPointerThatRestsIsNotClicked) {
    Aim(InTheBar);
    ShowBar(false);
    Click();
    EXPECT_EQ(clicks, 0) << "the click was meant for the bar";
    clock.Advance(ShiftGuard::Grace);
    Click();
    EXPECT_EQ(clicks, 1) << "by now it is meant for the button";
}

TEST_F(ShiftGuardTest, NorIsWhatIsMovedAway) {
    ShowBar(false);
    clock.Advance(ShiftGuard::Grace);
    Aim(InTheBar);
    auto* const undo = new QPushButton(QStringLiteral("Undo"), bar);
    undo->setGeometry(0, 0, 200, 40);
    undo->show();
    QObject::connect(undo, &QPushButton::clicked, &content, [this] { ++clicks; });
    ShowBar(true);
    Click();
    EXPECT_EQ(clicks, 0) << "the click was meant for the page";
}

TEST_F(ShiftGuardTest, WhoAimsAfterwardsHits) {
    Aim(BelowTheBar);
    ShowBar(false);
    Aim(InTheBar);
    Click();
    EXPECT_EQ(clicks, 1);
}

TEST_F(ShiftGuardTest, WhatHasNotMovedIsClicked) {
    Aim(BelowTheBar);
    Click();
    EXPECT_EQ(clicks, 1);
}

}  // namespace
