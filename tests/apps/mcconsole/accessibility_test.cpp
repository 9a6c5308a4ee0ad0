// SPDX-License-Identifier: Apache-2.0
// What assistive technology is told of the console's window: a walk over the accessibility tree.
#include <apps/mcconsole/consolewindow.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QWhatsThis>

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace {

using testing::IsEmpty;

class AccessibilityTest : public testing::Test {
  protected:
    AccessibilityTest() {
        CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
        window = std::make_unique<ConsoleWindow>(VtClientOptions());
        window->show();
    }
    ~AccessibilityTest() override {
        window.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }

    static void Walk(QAccessibleInterface* item, const std::function<void(QAccessibleInterface&)>& visit) {
        if (item == nullptr || !item->isValid()) return;
        visit(*item);
        // The cells of tables are many, and named by their content.
        if (item->role() == QAccessible::Table || item->role() == QAccessible::List) return;
        for (int i = 0; i < item->childCount(); ++i)
            Walk(item->child(i), visit);
    }
    static bool TakesKeys(const QWidget& widget) {
        return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
               widget.focusProxy() == nullptr;
    }

    QTemporaryDir directory;
    values::Tree tree;
    std::unique_ptr<ConsoleWindow> window;
};

TEST_F(AccessibilityTest, WhateverTakesKeysHasANameAndARole) {
    std::set<std::string> nameless;
    int count = 0;
    for (int page = 0; page < window->GetTabs()->count(); ++page) {
        window->GetTabs()->setCurrentIndex(page);
        QCoreApplication::processEvents();
        const std::string where = window->GetTabs()->currentWidget()->objectName().toStdString();
        Walk(QAccessible::queryAccessibleInterface(window.get()), [&](QAccessibleInterface& item) {
            const auto* const widget = qobject_cast<const QWidget*>(item.object());
            if (widget == nullptr || !TakesKeys(*widget)) return;
            ++count;
            if (!item.text(QAccessible::Name).isEmpty() && item.role() != QAccessible::NoRole) return;
            nameless.insert(where + ": " + widget->metaObject()->className() + ' ' +
                            widget->objectName().toStdString());
        });
    }
    EXPECT_GT(count, 40);
    EXPECT_THAT(nameless, IsEmpty());
}

TEST_F(AccessibilityTest, EveryPageSaysWhatItIsFor) {
    for (const char* const name :
         {"Status", "Configuration", "Commands", "Log", "MpxORVs", "MpxORVStatus", "MyMpxORV"}) {
        const auto* const page = window->GetTabs()->findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_NE(page, nullptr) << name;
        EXPECT_FALSE(page->whatsThis().isEmpty()) << name;
    }
}

TEST_F(AccessibilityTest, F1ShowsThatOfThePageInFront) {
    QApplication::setActiveWindow(window.get());
    const auto shown = [] {
        for (const auto* const widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->inherits("QWhatsThat")) return true;
        return false;
    };
    EXPECT_FALSE(shown());
    QTest::keyClick(window.get(), Qt::Key_F1);
    EXPECT_TRUE(shown());
    QWhatsThis::hideText();
}

}  // namespace
