// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgcenter.h>
#include <platform/widgets/screenfit.h>

#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <limits>
#include <memory>
#include <set>
#include <utility>

namespace {

constexpr int Absent = -12345;

/// A configuration store of its own, and windows as an application has them.
class WindowPlacementTest : public testing::Test {
  protected:
    WindowPlacementTest() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
    }
    ~WindowPlacementTest() override { CfgCenter::Instance().SetStorePath(QString()); }

    static std::unique_ptr<QWidget> Window(const QRect& geometry = QRect(10, 20, 300, 250)) {
        auto window = std::make_unique<QWidget>();
        window->move(geometry.topLeft());
        window->resize(geometry.size());
        return window;
    }
    static WindowPlacement* Place(QWidget* window, const char* name = "Main") {
        return new WindowPlacement(QString::fromLatin1(name), window, nullptr);
    }
    static int Stored(const char* key, const char* name = "Main") {
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        const std::unique_ptr<ICfg> section(root->OpenSection(QString::fromLatin1(name)));
        return section ? section->ReadInt(QString::fromLatin1(key), Absent) : Absent;
    }
    static QRect StoredRect(const char* name = "Main") {
        return QRect(Stored("x", name), Stored("y", name), Stored("w", name), Stored("h", name));
    }
    static void Store(const char* key, int number) {
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        const std::unique_ptr<ICfg> section(root->ProvideSection(QStringLiteral("Main")));
        section->WriteInt(QString::fromLatin1(key), number);
        section->CommitKey(QString::fromLatin1(key));
    }
    static void Store(const QRect& rect) {
        Store("x", rect.x());
        Store("y", rect.y());
        Store("w", rect.width());
        Store("h", rect.height());
    }

    QTemporaryDir m_directory;
};

TEST_F(WindowPlacementTest, AFirstStartLeavesTheWindowWhereItIs) {
    auto window = Window(QRect(11, 22, 333, 244));
    Place(window.get());
    EXPECT_EQ(window->geometry(), QRect(11, 22, 333, 244));
    EXPECT_FALSE(window->isMinimized() || window->isMaximized());
    window.reset();
    EXPECT_EQ(StoredRect(), QRect(11, 22, 333, 244));
    EXPECT_EQ(Stored("minimized"), 0);
    EXPECT_EQ(Stored("maximized"), 0);
}

TEST_F(WindowPlacementTest, AnotherStartBringsTheWindowBackAtOnce) {
    {
        const auto window = Window();
        Place(window.get());
        window->move(50, 60);
        window->resize(400, 350);
    }
    const auto window = Window();
    Place(window.get());
    EXPECT_EQ(window->pos(), QPoint(50, 60));
    EXPECT_EQ(window->size(), QSize(400, 350));
}

TEST_F(WindowPlacementTest, AMissingKeyLeavesThatPartAsItIs) {
    Store("x", 77);
    Store("h", 177);
    const auto window = Window(QRect(10, 20, 300, 250));
    Place(window.get());
    EXPECT_EQ(window->geometry(), QRect(77, 20, 300, 177));
}

TEST_F(WindowPlacementTest, IsTheWindowsChildWithoutAName) {
    const auto window = Window();
    auto* const placement = new WindowPlacement(QStringLiteral("Main"), window.get(), "not used");
    EXPECT_EQ(placement->parent(), window.get());
    EXPECT_EQ(placement->objectName(), QString());
    EXPECT_STREQ(placement->metaObject()->className(), "WindowPlacement");
    EXPECT_EQ(placement->qt_metacast("values::PersistantOwner"),
              static_cast<values::PersistantOwner*>(placement));
}

TEST_F(WindowPlacementTest, AMaximizedWindowKeepsTheGeometryStoredBefore) {
    Store(QRect(50, 60, 400, 350));
    {
        const auto window = Window();
        Place(window.get());
        window->show();
        window->showMaximized();
        RunTurns(3);
        ASSERT_NE(window->size(), QSize(400, 350));
    }
    EXPECT_EQ(StoredRect(), QRect(50, 60, 400, 350));
    EXPECT_EQ(Stored("maximized"), 1);

    const auto window = Window();
    Place(window.get());
    EXPECT_TRUE(window->isMaximized());
    EXPECT_EQ(window->normalGeometry(), QRect(50, 60, 400, 350));
}

TEST_F(WindowPlacementTest, AMinimizedWindowStoresItsGeometryAndThatItIs) {
    QRect shown;
    {
        const auto window = Window(QRect(50, 60, 400, 350));
        Place(window.get());
        window->show();
        RunTurns(3);
        window->setWindowState(Qt::WindowMinimized);
        shown = QRect(window->pos(), window->size());
        EXPECT_EQ(shown.size(), QSize(400, 350));
    }
    EXPECT_EQ(StoredRect(), shown);
    EXPECT_EQ(Stored("minimized"), 1);
    EXPECT_EQ(Stored("maximized"), 0);
    const auto window = Window();
    Place(window.get());
    EXPECT_TRUE(window->isMinimized());
}

TEST_F(WindowPlacementTest, BothMayBeSetAndOtherStatesStay) {
    Store("minimized", 7);
    Store("maximized", -1);
    const auto window = Window();
    window->setWindowState(Qt::WindowFullScreen);
    Place(window.get());
    EXPECT_EQ(window->windowState() & ~Qt::WindowActive,
              Qt::WindowFullScreen | Qt::WindowMinimized | Qt::WindowMaximized);
}

TEST_F(WindowPlacementTest, AWindowThatWasNotMaximizedIsNotAnyMore) {
    Store("maximized", 0);
    Store("minimized", 0);
    const auto window = Window();
    window->setWindowState(Qt::WindowMaximized);
    Place(window.get());
    EXPECT_FALSE(window->isMaximized());
}

TEST_F(WindowPlacementTest, WhatIsCommittedIsNotStoredAgain) {
    auto window = Window(QRect(1, 2, 300, 250));
    Place(window.get());
    WindowPlacement::CommitData();
    EXPECT_EQ(StoredRect(), QRect(1, 2, 300, 250));
    window->move(500, 500);
    window.reset();
    EXPECT_EQ(StoredRect(), QRect(1, 2, 300, 250));
}

TEST_F(WindowPlacementTest, CommitsAllThatLiveAndOnlyThose) {
    const auto first = Window(QRect(1, 2, 300, 250));
    const auto second = Window(QRect(3, 4, 310, 260));
    auto third = Window(QRect(5, 6, 320, 270));
    Place(first.get(), "First");
    Place(second.get(), "Second");
    Place(third.get(), "Third");
    third->move(7, 8);
    third.reset();
    EXPECT_EQ(Stored("x", "First"), Absent);
    WindowPlacement::CommitData();
    EXPECT_EQ(StoredRect("First"), QRect(1, 2, 300, 250));
    EXPECT_EQ(StoredRect("Second"), QRect(3, 4, 310, 260));
    EXPECT_EQ(StoredRect("Third"), QRect(7, 8, 320, 270));
}

TEST_F(WindowPlacementTest, CommitsThroughTheVirtualOperationInTheOrderOfTheSet) {
    struct Recording : WindowPlacement {
        Recording(QWidget* window, std::vector<WindowPlacement*>& order)
            : WindowPlacement(QStringLiteral("Main"), window, nullptr), m_order(order) {}
        void Store() override { m_order.push_back(this); }
        std::vector<WindowPlacement*>& m_order;
    };
    std::vector<WindowPlacement*> order;
    const auto window = Window();
    std::set<WindowPlacement*> placements;
    for (int i = 0; i < 5; ++i)
        placements.insert(new Recording(window.get(), order));
    WindowPlacement::CommitData();
    EXPECT_EQ(order, std::vector<WindowPlacement*>(placements.begin(), placements.end()));
}

TEST_F(WindowPlacementTest, ACommitSurvivesThatPlacementsGoMeanwhile) {
    struct Deleting : WindowPlacement {
        Deleting(QWidget* window, std::vector<QWidget*>& others)
            : WindowPlacement(QStringLiteral("Main"), window, nullptr), m_others(others) {}
        void Store() override {
            qDeleteAll(m_others);
            m_others.clear();
        }
        std::vector<QWidget*>& m_others;
    };
    std::vector<QWidget*> others;
    const auto window = Window();
    for (int i = 0; i < 5; ++i)
        new Deleting(window.get(), others);
    for (int i = 0; i < 5; ++i) {
        others.push_back(Window().release());
        Place(others.back(), "Other");
    }
    WindowPlacement::CommitData();
    EXPECT_TRUE(others.empty());
}

TEST_F(WindowPlacementTest, ACommitSurvivesThatAPlacementDestroysItself) {
    struct Fading : WindowPlacement {
        Fading(QWidget* window, int& count)
            : WindowPlacement(QStringLiteral("Main"), window, nullptr), m_count(count) {}
        void Store() override {
            ++m_count;
            delete this;
        }
        int& m_count;
    };
    int count = 0;
    const auto window = Window();
    const auto other = Window();
    for (int i = 0; i < 5; ++i)
        new Fading(window.get(), count);
    Place(other.get(), "Other");
    WindowPlacement::CommitData();
    EXPECT_EQ(count, 5);
    EXPECT_NE(Stored("x", "Other"), Absent);
}

TEST_F(WindowPlacementTest, ARestoreSurvivesThatThePlacementIsDestroyedMeanwhile) {
    struct Forgetting : QWidget {
        void moveEvent(QMoveEvent*) override { delete std::exchange(m_placement, nullptr); }
        WindowPlacement* m_placement = nullptr;
    };
    Store(QRect(50, 60, 400, 350));
    Forgetting window;
    window.setGeometry(10, 20, 300, 250);
    window.show();
    WindowPlacement* const placement = Place(&window);
    window.move(1, 2);
    RunTurns(3);
    window.m_placement = placement;
    placement->Restore();
    EXPECT_EQ(window.m_placement, nullptr);
    EXPECT_EQ(QRect(window.pos(), window.size()), QRect(50, 60, 400, 350));
}

TEST_F(WindowPlacementTest, WithoutANameNothingHappens) {
    auto window = Window();
    Place(window.get(), "");
    EXPECT_EQ(window->geometry(), QRect(10, 20, 300, 250));
    WindowPlacement::CommitData();
    window.reset();
    EXPECT_FALSE(QFile::exists(CfgCenter::Instance().GetStorePath()));
}

TEST_F(WindowPlacementTest, WithoutAWidgetNothingHappens) {
    {
        WindowPlacement placement(QStringLiteral("Main"), nullptr, nullptr);
        EXPECT_EQ(placement.parent(), nullptr);
        placement.Store();
        placement.Restore();
        placement.ApplyPersistantBeforeWrite();
        placement.ApplyPersistantAfterRead();
        WindowPlacement::CommitData();
    }
    EXPECT_FALSE(QFile::exists(CfgCenter::Instance().GetStorePath()));
}

TEST_F(WindowPlacementTest, OutlivedByItsWindowElsewhereItDoesNothingMore) {
    auto window = Window(QRect(1, 2, 300, 250));
    std::unique_ptr<WindowPlacement> placement(Place(window.get()));
    placement->setParent(nullptr);
    window.reset();
    placement->Store();
    placement->Restore();
    placement.reset();
    EXPECT_EQ(Stored("x"), Absent);
}

TEST_F(WindowPlacementTest, RestoresAPlaceWhereNoScreenIs) {
    Store(QRect(-5000, 7000, 300, 250));
    const auto window = Window();
    Place(window.get());
    EXPECT_EQ(window->pos(), QPoint(-5000, 7000));
    EXPECT_EQ(window->size(), QSize(300, 250));
    screenfit::BringOntoScreen(*window);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(window->geometry()));
    EXPECT_EQ(window->size(), QSize(300, 250));
}

// Also what is far beyond any screen, and what a screen cannot hold.
TEST_F(WindowPlacementTest, RestoresToTheNumberAndStoresTheSameAgain) {
    constexpr int Beyond = 2 * QWIDGETSIZE_MAX;
    for (const QRect& stored : {QRect(-Beyond, Beyond, 300, 250), QRect(3, 4, QWIDGETSIZE_MAX, 1),
                                QRect(-2000000000, 2000000000, 0, 0)}) {
        Store(stored);
        {
            const auto window = Window();
            Place(window.get());
            EXPECT_EQ(window->pos(), stored.topLeft());
            EXPECT_EQ(window->size(), stored.size());
        }
        EXPECT_EQ(StoredRect(), stored);
    }
}

TEST_F(WindowPlacementTest, SurvivesAbsurdNumbers) {
    constexpr int Lowest = std::numeric_limits<int>::min();
    constexpr int Highest = std::numeric_limits<int>::max();
    for (const int x : {Lowest, -1, Highest}) {
        for (const int w : {Lowest, -1, 0, Highest}) {
            Store("x", x);
            Store("y", x);
            Store("w", w);
            Store("h", w);
            Store("maximized", w);
            const auto window = Window();
            Place(window.get());
            EXPECT_GE(window->width(), 0);
            EXPECT_GE(window->height(), 0);
            screenfit::BringOntoScreen(*window);
            const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
            EXPECT_TRUE(screen.contains(window->normalGeometry())) << x << " " << w;
            EXPECT_FALSE(window->normalGeometry().isEmpty()) << x << " " << w;
            window->show();
            RunTurns(2);
        }
    }
}

}  // namespace
