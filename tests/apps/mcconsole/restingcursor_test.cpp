// SPDX-License-Identifier: Apache-2.0
// A cursor that blinks while somebody types, and stands still in a window that nobody touches.
#include <apps/pages/restingcursor.h>

#include <tests/support/doubles/manualclock.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

namespace {

using namespace std::chrono_literals;

constexpr int FlashTime = 1000;

class RestingCursorTest : public testing::Test {
  protected:
    RestingCursorTest() {
        QApplication::setCursorFlashTime(FlashTime);
        auto* const layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_field);
        layout->addWidget(m_other);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        m_field->setFocus();
    }
    ~RestingCursorTest() override { QApplication::setCursorFlashTime(m_systems); }

    static bool Blinks() { return QApplication::cursorFlashTime() == FlashTime; }

    const int m_systems = QApplication::cursorFlashTime();
    ManualClock m_clock;
    QWidget m_window;
    QLineEdit* const m_field = new QLineEdit;
    QLineEdit* const m_other = new QLineEdit;
};

TEST_F(RestingCursorTest, StandsStillTenSecondsAfterTheLastKey) {
    const RestingCursor cursor(m_clock);
    m_clock.Advance(9s);
    QTest::keyClick(m_field, Qt::Key_1);
    m_clock.Advance(9999ms);
    EXPECT_TRUE(Blinks());
    m_clock.Advance(1ms);
    EXPECT_FALSE(Blinks());
}

struct TouchRow {
    const char* name;
    void (*touch)(QLineEdit& field, QLineEdit& other);
};

class RestingCursorTouched : public RestingCursorTest, public testing::WithParamInterface<TouchRow> {};

TEST_P(RestingCursorTouched, BlinksAgain) {
    const RestingCursor cursor(m_clock);
    m_clock.Advance(10s);
    ASSERT_FALSE(Blinks());
    GetParam().touch(*m_field, *m_other);
    EXPECT_TRUE(Blinks());
    m_clock.Advance(10s);
    EXPECT_FALSE(Blinks());
}

INSTANTIATE_TEST_SUITE_P(
    Touches, RestingCursorTouched,
    testing::Values(TouchRow{"Key", [](QLineEdit& field, QLineEdit&) { QTest::keyClick(&field, Qt::Key_1); }},
                    TouchRow{"Click",
                             [](QLineEdit& field, QLineEdit&) { QTest::mouseClick(&field, Qt::LeftButton); }},
                    TouchRow{"AnotherField", [](QLineEdit&, QLineEdit& other) { other.setFocus(); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(RestingCursorTest, ListensToTheFieldThatHasTheKeysOnly) {
    const RestingCursor cursor(m_clock);
    m_other->setFocus();
    m_clock.Advance(10s);
    QTest::keyClick(m_field, Qt::Key_1);
    EXPECT_FALSE(Blinks());
}

TEST_F(RestingCursorTest, LeavesTheSystemsChoiceBehind) {
    {
        const RestingCursor cursor(m_clock);
        m_clock.Advance(10s);
    }
    EXPECT_TRUE(Blinks());
}

TEST_F(RestingCursorTest, NeverBlinksWhereTheSystemDoesNotWantIt) {
    QApplication::setCursorFlashTime(0);
    const RestingCursor cursor(m_clock);
    QTest::keyClick(m_field, Qt::Key_1);
    EXPECT_EQ(QApplication::cursorFlashTime(), 0);
}

}  // namespace
