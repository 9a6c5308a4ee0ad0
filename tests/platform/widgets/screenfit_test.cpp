// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/screenfit.h>

#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <limits>
#include <ostream>
#include <vector>

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();

/// Two screens side by side, below a task bar each.
const std::vector<QRect> Two = {QRect(0, 30, 1000, 700), QRect(1000, 30, 800, 570)};

QRect FromEnds(int left, int top, int right, int bottom) {
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

struct FitRow {
    const char* name;
    QRect frame;
    QRect fitted;
};
void PrintTo(const FitRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ScreenFit : public testing::TestWithParam<FitRow> {};

TEST_P(ScreenFit, PutsTheFrameThere) {
    const QRect fitted = screenfit::Fitted(GetParam().frame, Two);
    EXPECT_EQ(fitted, GetParam().fitted)
        << fitted.x() << "," << fitted.y() << " " << fitted.width() << "x" << fitted.height();
}

INSTANTIATE_TEST_SUITE_P(
    Frames, ScreenFit,
    testing::Values(
        FitRow{"OnAScreenItStays", QRect(100, 100, 300, 200), QRect(100, 100, 300, 200)},
        FitRow{"AsLargeAsAScreenItStays", QRect(1000, 30, 800, 570), QRect(1000, 30, 800, 570)},
        FitRow{"AcrossTwoScreensItStays", QRect(900, 100, 300, 200), QRect(900, 100, 300, 200)},
        FitRow{"PartlyOutsideItStaysWhileItCanBeTaken", QRect(-200, 500, 300, 600),
               QRect(-200, 500, 300, 600)},
        FitRow{"HardlyToBeTakenItComesBack", QRect(-250, 100, 300, 200), QRect(0, 100, 300, 200)},
        FitRow{"WithItsTitleAboveItComesDown", QRect(100, 0, 300, 200), QRect(100, 30, 300, 200)},
        FitRow{"WithItsTitleBelowItComesUp", QRect(100, 725, 300, 200), QRect(100, 530, 300, 200)},
        FitRow{"BesideTheScreensItComesToTheNearest", QRect(5000, 100, 300, 200), QRect(1500, 100, 300, 200)},
        FitRow{"FarAwayItComesToTheNearestCorner", QRect(-9000, -9000, 300, 200), QRect(0, 30, 300, 200)},
        FitRow{"LargerThanTheScreenItShrinks", QRect(1100, 50, 3000, 400), QRect(1000, 50, 800, 400)},
        FitRow{"TooHighItShrinks", QRect(1100, 50, 300, 4000), QRect(1100, 30, 300, 570)},
        FitRow{"WithoutASizeItGetsOne", QRect(100, 100, 0, 0), QRect(100, 100, 50, 50)},
        FitRow{"WithANegativeSizeItGetsOne", QRect(100, 100, -5, -5), QRect(100, 100, 50, 50)},
        FitRow{"AtTheHighestNumbers", FromEnds(Highest - 9, Highest - 9, Highest, Highest),
               QRect(1750, 550, 50, 50)},
        FitRow{"AtTheLowestNumbers", FromEnds(Lowest, Lowest, Lowest + 99, Lowest + 99),
               QRect(0, 30, 100, 100)},
        FitRow{"OverAllNumbers", FromEnds(Lowest, Lowest, Highest, Highest), QRect(0, 30, 1000, 700)},
        FitRow{"TurnedInsideOut", FromEnds(Highest, Highest, Lowest, Lowest), QRect(950, 680, 50, 50)}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ScreenFitWithoutScreens, LeavesTheFrame) {
    EXPECT_EQ(screenfit::Fitted(QRect(-5000, 1, 2, 3), {}), QRect(-5000, 1, 2, 3));
}

class ScreenFitOfAWindow : public testing::Test {
  protected:
    ScreenFitOfAWindow() {
        m_window.move(100, 110);
        m_window.resize(300, 200);
    }
    bool IsOnScreen() const { return m_screen.contains(m_window.frameGeometry()); }

    const QRect m_screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget m_window;
};

TEST_F(ScreenFitOfAWindow, LeavesOneThatIsOnTheScreen) {
    screenfit::BringOntoScreen(m_window);
    EXPECT_EQ(m_window.geometry(), QRect(100, 110, 300, 200));
}

TEST_F(ScreenFitOfAWindow, BringsBackOneThatIsNotShownYet) {
    m_window.move(20000, -30000);
    screenfit::BringOntoScreen(m_window);
    m_window.show();
    EXPECT_TRUE(WaitUntil([this] { return IsOnScreen(); }));
    EXPECT_EQ(m_window.size(), QSize(300, 200));
}

TEST_F(ScreenFitOfAWindow, BringsBackOneThatIsShown) {
    m_window.show();
    m_window.move(20000, -30000);
    RunTurns(3);
    EXPECT_FALSE(IsOnScreen());
    screenfit::BringOntoScreen(m_window);
    EXPECT_TRUE(WaitUntil([this] { return IsOnScreen(); }));
    EXPECT_EQ(m_window.size(), QSize(300, 200));
}

TEST_F(ScreenFitOfAWindow, MakesOneFitWithItsDecoration) {
    m_window.resize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    screenfit::BringOntoScreen(m_window);
    m_window.show();
    EXPECT_TRUE(WaitUntil([this] { return IsOnScreen(); }));
}

TEST_F(ScreenFitOfAWindow, AMaximizedOneStaysThatAndReturnsToTheScreen) {
    m_window.move(20000, -30000);
    m_window.setWindowState(Qt::WindowMaximized);
    screenfit::BringOntoScreen(m_window);
    EXPECT_TRUE(m_window.isMaximized());
    m_window.show();
    RunTurns(3);
    EXPECT_TRUE(m_window.isMaximized());
    m_window.showNormal();
    EXPECT_TRUE(WaitUntil([this] { return IsOnScreen() && m_window.size() == QSize(300, 200); }));
}

TEST_F(ScreenFitOfAWindow, AMinimizedOneStaysThatAndReturnsToTheScreen) {
    m_window.move(20000, -30000);
    m_window.setWindowState(Qt::WindowMinimized);
    screenfit::BringOntoScreen(m_window);
    EXPECT_TRUE(m_window.isMinimized());
    m_window.showNormal();
    EXPECT_TRUE(WaitUntil([this] { return IsOnScreen(); }));
}

TEST_F(ScreenFitOfAWindow, AMaximizedOneThatReturnsToTheScreenIsLeft) {
    m_window.setWindowState(Qt::WindowMaximized);
    screenfit::BringOntoScreen(m_window);
    EXPECT_TRUE(m_window.isMaximized());
    EXPECT_EQ(m_window.normalGeometry().size(), QSize(300, 200));
}

TEST_F(ScreenFitOfAWindow, OneThatMustBeLargerThanTheScreenBeginsOnIt) {
    m_window.setMinimumSize(m_screen.size() * 2);
    m_window.move(-4000, -4000);
    screenfit::BringOntoScreen(m_window);
    EXPECT_TRUE(m_screen.contains(m_window.pos()));
}

}  // namespace
