// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/values/tree.h>
#include <platform/widgets/standardnotification.h>

#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QContextMenuEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// A display with everything around it: tree, a configuration file, a network of fake modules.
class GTSDisplayTest : public testing::Test {
  protected:
    GTSDisplayTest() { CfgCenter::Instance().SetStorePath(m_directory.filePath(Text("test.ini"))); }
    ~GTSDisplayTest() override {
        m_display.reset();
        for (StandardNotification* const warning : Warnings())
            delete warning;
        CfgCenter::Instance().SetStorePath(QString());
    }

    static QString Text(const char* text) { return treeaccess::Text(text); }
    static std::unique_ptr<ICfg> Provide(ICfg& cfg, const QString& name) {
        return std::unique_ptr<ICfg>(cfg.ProvideSection(name));
    }
    static std::unique_ptr<ICfg> Gts() {
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        return Provide(*root, Text("GTS"));
    }
    static void PutCount(int count) { Gts()->WriteInt(Text("ModuleCount"), count); }
    /// The section of a module in the configuration.
    static void PutModule(int number, int index, const char* type, const char* address, int interval) {
        const auto section = Provide(*Gts(), Text("Module%1").arg(number));
        section->WriteInt(Text("Index"), index);
        section->WriteString(Text("Name"), Text(type));
        section->WriteString(Text("Address"), Text(address));
        section->WriteInt(Text("PollInterval"), interval);
    }
    static void PutAssignment(int number, int input, const char* frequency) {
        const auto section = Provide(*Provide(*Gts(), Text("Module%1").arg(number)), Text("Assignments"));
        section->WriteInt(Text("AssignmentCount"), 12);
        section->WriteString(Text("DI_%1").arg(input), Text(frequency));
    }

    GTSDisplay& Show() {
        m_display = std::make_unique<GTSDisplay>();
        m_display->show();
        return *m_display;
    }
    template <class W>
    W& Child(const char* name) {
        W* const child = m_display->findChild<W*>(Text(name));
        if (child == nullptr) qFatal("The display has no %s", name);
        return *child;
    }
    QTreeWidget& Rows() { return Child<QTreeWidget>("dataModules"); }
    QPushButton& AssignInputs() { return Child<QPushButton>("assignInputs"); }
    QPushButton& AddModule() { return Child<QPushButton>("addModule"); }
    static void Click(QWidget& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    /// The texts of a row.
    std::vector<QString> Row(int row) {
        std::vector<QString> texts;
        const QTreeWidgetItem* const item = Rows().topLevelItem(row);
        for (int column = 0; item != nullptr && column < 5; ++column)
            texts.push_back(item->text(column));
        return texts;
    }
    template <class... Texts>
    static std::vector<QString> MakeRow(Texts... texts) {
        return {Text(texts)...};
    }
    bool WaitForStatus(int row, const char* status) {
        return WaitUntil([&] { return Row(row)[4] == Text(status); });
    }

    /// Asks for the context menu at \a position of the rows.
    void RightClick(const QPoint& position) {
        QWidget* const viewport = Rows().viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, viewport->mapToGlobal(position));
        QApplication::sendEvent(viewport, &event);
    }
    void RightClickOnRow(int row) { RightClick(Rows().visualItemRect(Rows().topLevelItem(row)).center()); }
    static QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static std::vector<QString> MenuTexts() {
        std::vector<QString> texts;
        if (const QMenu* const menu = OpenMenu())
            for (const QAction* const action : menu->actions())
                texts.push_back(action->text());
        return texts;
    }
    static void Choose(const char* text) {
        QMenu* const menu = OpenMenu();
        ASSERT_NE(menu, nullptr);
        for (QAction* const action : menu->actions())
            if (action->text() == Text(text))
                return QTest::mouseClick(menu, Qt::LeftButton, Qt::KeyboardModifiers(),
                                         menu->actionGeometry(action).center());
        FAIL() << "no " << text << " in the menu";
    }

    static std::vector<StandardNotification*> Warnings() {
        std::vector<StandardNotification*> warnings;
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const warning = qobject_cast<StandardNotification*>(widget))
                warnings.push_back(warning);
        return warnings;
    }
    static QString ErrorText() { return treeaccess::ContentAt(Text("/ORVServer/GTS/ERROR")); }
    static QString Configured() { return treeaccess::ContentAt(Text("/ORVServer/GTS/CONFIGURED")); }

    QTemporaryDir m_directory;
    FakeModules m_modules;
    values::Tree m_tree;
    std::unique_ptr<GTSDisplay> m_display;
};
