// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/undobar.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

using namespace std::chrono_literals;

namespace {

class UndoBarTest : public testing::Test {
  protected:
    UndoBarTest() : bar(clock, &window) { window.show(); }

    void Offer(const char* what) {
        bar.Offer(QString::fromLatin1(what), [this, what] { undone += QString::fromLatin1(what); });
    }
    void ClickUndo() { QTest::mouseClick(bar.findChild<QPushButton*>(), Qt::LeftButton); }
    QString Text() const { return bar.findChild<QLabel*>()->text(); }

    ManualClock clock;
    QWidget window;
    UndoBar bar;
    QString undone;
};

TEST_F(UndoBarTest, IsNotThereUntilSomethingIsDone) {
    EXPECT_FALSE(bar.isVisible());
    Offer("a");
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(Text(), QStringLiteral("a"));
}

TEST_F(UndoBarTest, UndoesOnceAndGoes) {
    Offer("a");
    ClickUndo();
    EXPECT_EQ(undone, QStringLiteral("a"));
    EXPECT_FALSE(bar.isVisible());
    clock.Advance(1h);
    EXPECT_EQ(undone, QStringLiteral("a"));
}

TEST_F(UndoBarTest, OffersForTenSeconds) {
    Offer("a");
    clock.Advance(9999ms);
    EXPECT_TRUE(bar.isVisible());
    clock.Advance(1ms);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(undone, QString());
}

TEST_F(UndoBarTest, OffersTheLastThingForItsOwnTime) {
    Offer("a");
    clock.Advance(9s);
    Offer("b");
    clock.Advance(9s);
    EXPECT_EQ(Text(), QStringLiteral("b"));
    ClickUndo();
    EXPECT_EQ(undone, QStringLiteral("b"));
}

TEST_F(UndoBarTest, OffersWhatWasDoneBeforeOnceTheLastIsUndone) {
    Offer("a");
    Offer("b");
    clock.Advance(9s);
    ClickUndo();
    EXPECT_EQ(Text(), QStringLiteral("a"));
    clock.Advance(9s);
    ClickUndo();
    EXPECT_EQ(undone, QStringLiteral("ba"));
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(UndoBarTest, ForgetsAllWithTheLast) {
    Offer("a");
    Offer("b");
    clock.Advance(10s);
    EXPECT_FALSE(bar.isVisible());
    Offer("c");
    ClickUndo();
    EXPECT_EQ(undone, QStringLiteral("c"));
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(UndoBarTest, MayOfferWhatUndoesTheUndoing) {
    bar.Offer(QStringLiteral("a"), [this] { Offer("b"); });
    ClickUndo();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(Text(), QStringLiteral("b"));
}

}  // namespace
