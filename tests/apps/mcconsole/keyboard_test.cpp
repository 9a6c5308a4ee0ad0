// SPDX-License-Identifier: Apache-2.0
// The windows without a mouse, and as a screen reader tells of them.
#include <apps/mcconsole/connectdialog.h>
#include <apps/pages/guimodule.h>
#include <apps/pages/keysdialog.h>
#include <apps/pages/scrolledpage.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/apps/mcconsole/memorystations.h>

#include <gmock/gmock.h>

#include <QtCore/QLocale>
#include <QtGui/QAccessible>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTableWidget>

#include <map>
#include <set>

namespace {

using testing::IsEmpty;

/// What people take for one control: a field within a box belongs to the box.
QWidget* ControlOf(QWidget* widget) {
    for (QWidget* above = widget; above != nullptr && !above->isWindow(); above = above->parentWidget()) {
        if (qobject_cast<ScrolledPage*>(above) != nullptr) break;
        const bool isWhole = qobject_cast<QAbstractSpinBox*>(above) != nullptr ||
                             qobject_cast<QComboBox*>(above) != nullptr ||
                             qobject_cast<QAbstractScrollArea*>(above) != nullptr;
        if (isWhole) return above;
    }
    return widget;
}

std::string Describe(const QWidget* widget) {
    return std::string(widget->metaObject()->className()) + ' ' + widget->objectName().toStdString();
}

/// Everything in \a window that people can see and do something with.
std::set<QWidget*> Controls(QWidget& window) {
    std::set<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool isButton =
            qobject_cast<QPushButton*>(widget) != nullptr || qobject_cast<QCheckBox*>(widget) != nullptr;
        const bool takesFocus = isButton || (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (!takesFocus || !widget->isVisible() || !widget->isEnabled()) continue;
        controls.insert(ControlOf(widget->focusProxy() != nullptr ? widget->focusProxy() : widget));
    }
    return controls;
}

/// Presses Tab until the focus is back where it began.
std::set<QWidget*> WalkByTab(QWidget& window) {
    constexpr int most = 200;
    std::set<QWidget*> reached;
    for (int i = 0; i < most; ++i) {
        QWidget* const focus = window.focusWidget();
        if (focus != nullptr) reached.insert(ControlOf(focus));
        QTest::keyClick(focus != nullptr ? focus : &window, Qt::Key_Tab);
    }
    return reached;
}

std::vector<std::string> Unreachable(QWidget& window) {
    std::vector<std::string> missing;
    const std::set<QWidget*> reached = WalkByTab(window);
    for (QWidget* control : Controls(window))
        if (reached.count(control) == 0) missing.push_back(Describe(control));
    return missing;
}

std::vector<std::string> Nameless(QWidget& window) {
    std::vector<std::string> nameless;
    for (QWidget* control : Controls(window)) {
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(control);
        const bool isTabs = qobject_cast<QTabBar*>(control) != nullptr;  // each tab has a name
        if (!isTabs && (spoken == nullptr || spoken->text(QAccessible::Name).trimmed().isEmpty()))
            nameless.push_back(Describe(control));
    }
    return nameless;
}

/// The texts in \a window that are given the same key.
std::vector<std::string> SharedKeys(QWidget& window) {
    std::map<QString, std::vector<std::string>> uses;
    const auto add = [&uses](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty()) uses[key].push_back(text.toStdString());
    };
    for (const auto* menus : window.findChildren<QMenuBar*>())
        for (const QAction* action : menus->actions())
            add(action->text());
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible()) add(button->text());
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr) add(label->text());
    std::vector<std::string> shared;
    for (const auto& [key, texts] : uses)
        if (texts.size() > 1) shared.insert(shared.end(), texts.begin(), texts.end());
    return shared;
}

std::vector<std::string> SharedKeysOfMenus(QWidget& window) {
    std::vector<std::string> shared;
    for (const auto* menu : window.findChildren<QMenu*>()) {
        std::set<QString> keys;
        for (const QAction* action : menu->actions()) {
            const QString key = QKeySequence::mnemonic(action->text()).toString();
            if (!key.isEmpty() && !keys.insert(key).second) shared.push_back(action->text().toStdString());
        }
    }
    return shared;
}

class KeyboardTest : public ConsoleTest {
  protected:
    template <class F>
    void OnEachPage(const F& check) {
        for (int i = 0; i < window->GetTabs()->count(); ++i) {
            SCOPED_TRACE(window->GetTabs()->widget(i)->objectName().toStdString());
            window->GetTabs()->setCurrentIndex(i);
            QCoreApplication::processEvents();
            check();
        }
    }
};

TEST_F(KeyboardTest, ReachesEveryControlOfEveryPage) {
    server.WriteFile(QStringLiteral("mcserver.ini"), "[StaticMpxORVs]\nNames=Tower\n");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    QApplication::setActiveWindow(window.get());
    OnEachPage([this] { EXPECT_THAT(Unreachable(*window), IsEmpty()); });
}

TEST_F(KeyboardTest, EveryControlHasAName) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    OnEachPage([this] { EXPECT_THAT(Nameless(*window), IsEmpty()); });
}

TEST_F(KeyboardTest, BringsTheControlThatHasTheFocusIntoSightOfASmallWindow) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    QApplication::setActiveWindow(window.get());
    window->resize(480, 320);
    ASSERT_EQ(window->size(), QSize(480, 320));
    const QWidget* const button = Find<QPushButton>("MyMpxORV", "Calibrate");
    EXPECT_TRUE(button->visibleRegion().isEmpty());
    for (int i = 0; i < 100 && window->focusWidget() != button; ++i)
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), button);
    EXPECT_FALSE(button->visibleRegion().isEmpty());
}

TEST_F(KeyboardTest, GoesFromPageToPage) {
    QApplication::setActiveWindow(window.get());
    window->GetTabs()->setFocus();
    for (int i = 1; i < window->GetTabs()->count(); ++i) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(window->GetTabs()->currentIndex(), i);
    }
}

TEST_F(KeyboardTest, HasAKeyForEachPage) {
    QApplication::setActiveWindow(window.get());
    for (int i = window->GetTabs()->count() - 1; i >= 0; --i) {
        QTest::keyClick(window.get(), static_cast<Qt::Key>(Qt::Key_0 + (i + 1) % 10), Qt::AltModifier);
        EXPECT_EQ(window->GetTabs()->currentIndex(), i);
    }
}

TEST_F(KeyboardTest, HasAKeyForTheFrequencyFromAnywhere) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    QApplication::setActiveWindow(window.get());
    OnEachPage([this] {
        const bool isOwn = window->GetTabs()->currentWidget()->objectName() == QLatin1String("MyMpxORV");
        QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
        const auto* const field = qobject_cast<QLineEdit*>(window->focusWidget());
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->objectName(), QStringLiteral("Frequency"));
        EXPECT_EQ(field->selectedText(), field->text());
        EXPECT_EQ(window->GetTabs()->currentWidget()->objectName(),
                  isOwn ? QStringLiteral("MyMpxORV") : QStringLiteral("Overview"));
    });
}

TEST_F(KeyboardTest, ListsItsKeys) {
    const std::vector<KeysDialog::Row> rows = window->GetKeys();
    const auto what = [&rows](const char* keys) {
        for (const KeysDialog::Row& row : rows)
            if (row.keys == QLatin1String(keys)) return row.what.toStdString();
        return std::string();
    };
    EXPECT_EQ(what("Alt+1"), "Overview");
    EXPECT_EQ(what("Ctrl+L"), "Frequency field");
    EXPECT_EQ(what("Ctrl+H"), "Recent frequencies");
    EXPECT_EQ(what("Ctrl+B"), "Favourite frequencies");
    EXPECT_EQ(what("Ctrl+D"), "Add to the favourites");
    EXPECT_EQ(what("Ctrl+Shift+B"), "Edit the favourites");
    EXPECT_EQ(what("Ctrl+O"), "Connect");
    const KeysDialog dialog(rows, nullptr);
    EXPECT_EQ(dialog.findChild<QTableWidget*>()->rowCount(), static_cast<int>(rows.size()));
}

TEST_F(KeyboardTest, ServesTheDialogThatAsksForTheServer) {
    ConnectDialog dialog(RecentServers(), VtClientOptions(), nullptr);
    dialog.PreferEncryption();
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    EXPECT_THAT(Unreachable(dialog), IsEmpty());
    EXPECT_THAT(Nameless(dialog), IsEmpty());
}

TEST_F(KeyboardTest, ServesTheListOfStationsToo) {
    MemoryStations stations;
    ConnectDialog dialog(RecentServers(), VtClientOptions(), nullptr, stations.Maker());
    dialog.show();
    dialog.findChild<QGroupBox*>(QStringLiteral("Stations"))->setChecked(true);
    QApplication::setActiveWindow(&dialog);
    QCoreApplication::processEvents();
    EXPECT_THAT(Unreachable(dialog), IsEmpty());
    EXPECT_THAT(Nameless(dialog), IsEmpty());
    EXPECT_THAT(SharedKeys(dialog), IsEmpty());
}

class WindowsInALanguage : public testing::TestWithParam<const char*> {
  protected:
    WindowsInALanguage() : m_module(QString::fromLatin1(GetParam())) {}
    ~WindowsInALanguage() override { QLocale::setDefault(QLocale::c()); }

    values::Tree m_tree;
    GuiModule m_module;
};

TEST_P(WindowsInALanguage, GiveAKeyOneMeaningOnEachPage) {
    ConsoleWindow window{VtClientOptions()};
    window.show();
    EXPECT_THAT(SharedKeysOfMenus(window), IsEmpty());
    for (int i = 0; i < window.GetTabs()->count(); ++i) {
        window.GetTabs()->setCurrentIndex(i);
        EXPECT_THAT(SharedKeys(window), IsEmpty());
    }
}

/// What bars above the pages have stands there at the worst moment, beside any page.
TEST_P(WindowsInALanguage, GiveAKeyOneMeaningAlsoWithAllBarsThere) {
    ConsoleWindow window{VtClientOptions()};
    window.show();
    const auto isInPage = [&window](const QWidget* widget) { return window.GetTabs()->isAncestorOf(widget); };
    for (int i = 0; i < window.GetTabs()->count(); ++i) {
        window.GetTabs()->setCurrentIndex(i);
        std::map<QString, std::set<QString>> uses;
        const auto add = [&uses](const QString& text) {
            const QString key = QKeySequence::mnemonic(text).toString();
            if (!key.isEmpty()) uses[key].insert(text);
        };
        for (const QAction* const action : window.menuBar()->actions())
            add(action->text());
        for (const auto* const button : window.findChildren<QAbstractButton*>())
            if (button->isVisible() || !isInPage(button)) add(button->text());
        for (const auto* const label : window.findChildren<QLabel*>())
            if (label->isVisible() && label->buddy() != nullptr) add(label->text());
        for (const auto& [key, texts] : uses)
            EXPECT_EQ(texts.size(), 1U)
                << window.GetTabs()->tabText(i).toStdString() << ", "
                << QStringList(texts.begin(), texts.end()).join(QStringLiteral(" | ")).toStdString();
    }
}

TEST_P(WindowsInALanguage, FitASmallScreenAndShowAllOnALargeOne) {
    const ConsoleWindow window{VtClientOptions()};
    EXPECT_LE(window.minimumSizeHint().width(), 640);
    EXPECT_LE(window.minimumSizeHint().height(), 400);
    for (const auto* page : window.findChildren<ScrolledPage*>())
        EXPECT_GE(window.width(), page->widget()->minimumSizeHint().width());
}

TEST_P(WindowsInALanguage, ShowAllOfTheOverviewOnASmallScreen) {
    ConsoleWindow window{VtClientOptions()};
    window.resize(1024, 560);  // of 600 lines the desktop takes some
    window.show();
    ASSERT_EQ(window.size(), QSize(1024, 560));
    const auto* const page = window.findChild<ScrolledPage*>(QStringLiteral("Overview"));
    EXPECT_FALSE(page->horizontalScrollBar()->isVisible());
    EXPECT_FALSE(page->verticalScrollBar()->isVisible());
}

TEST_P(WindowsInALanguage, GiveAKeyOneMeaningInTheDialog) {
    ConnectDialog dialog(RecentServers(), VtClientOptions(), nullptr);
    dialog.show();
    EXPECT_THAT(SharedKeys(dialog), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, WindowsInALanguage, testing::Values("en", "de"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
