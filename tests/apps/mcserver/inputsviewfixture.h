// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/inputmodel.h>
#include <apps/mcserver/suppression/inputsview.h>
#include <apps/pages/noticebar.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>
#include <platform/widgets/standardnotification.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/support/printing.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <memory>
#include <optional>
#include <string>

/// The table of inputs of a plant with two modules; the first may be a program.
class InputsViewTest : public testing::Test {
  protected:
    InputsViewTest() {
        CfgCenter::Instance().SetStorePath(File("test.ini"));
        WriteFile("test.ini",
                  "[GTS]\nModuleCount=2\n"
                  "Module0\\Index=0\nModule0\\Name=ADAM-6051\nModule0\\Address=127.0.0."
                  "1\nModule0\\PollInterval=10\n"
                  "Module0\\Assignments\\AssignmentCount=12\nModule0\\Assignments\\DI_3=121500000\n"
                  "Module0\\Labels\\DI_3=\"Tower 1\"\n"
                  "Module1\\Index=6\nModule1\\Name=ADAM-6060\nModule1\\Address=127.0.0.1\n"
                  "Module1\\PollInterval=10\n");
    }
    ~InputsViewTest() override {
        m_view.reset();
        m_display.reset();
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const warning = qobject_cast<StandardNotification*>(widget)) delete warning;
        qunsetenv("MCS_MODBUS_PORT");
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Show() {
        if (m_module) qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module->Port()));
        if (!m_module) qputenv("MCS_MODBUS_PORT", "1");  // nobody is there
        m_display = std::make_unique<GTSDisplay>();
        m_view = std::make_unique<InputsView>(m_display->GetPlant(), FrequencyRange{300000.0, 3000000000.0});
        m_view->resize(900, 400);
        m_view->show();
    }
    void ShowWithModule() {
        m_module.emplace();
        ASSERT_NO_FATAL_FAILURE(m_module->Start());
        Show();
    }
    QTableView& Table() { return *m_view->findChild<QTableView*>(QStringLiteral("Inputs")); }
    QModelIndex Cell(int row, int column) { return Table().model()->index(row, column); }
    QString TextAt(int row, int column) { return Cell(row, column).data().toString(); }
    std::string Notice() {
        const auto& bar = *m_view->findChild<NoticeBar*>();
        return bar.isVisible() ? bar.GetText().toStdString() : std::string();
    }
    void Click(const char* button) {
        QTest::mouseClick(m_view->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }
    QLineEdit* OpenCell(int row, int column) {
        const QPoint center = Table().visualRect(Cell(row, column)).center();
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        QTest::mouseDClick(Table().viewport(), Qt::LeftButton, Qt::KeyboardModifiers(), center);
        return Table().viewport()->findChild<QLineEdit*>();
    }
    /// Types \a text into a cell, in place of what is there.
    void Enter(int row, int column, const char* text) {
        QLineEdit* const field = OpenCell(row, column);
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, QString::fromUtf8(text));
        QTest::keyClick(field, Qt::Key_Return);
        RunTurns(2);
    }
    /// The same through assistive technology.
    void Write(int row, int column, const char* text) {
        QLineEdit* const field = OpenCell(row, column);
        ASSERT_NE(field, nullptr);
        spoken::Write(*field, QString::fromUtf8(text));
        QTest::keyClick(field, Qt::Key_Return);
        RunTurns(2);
    }
    /// Puts \a text on the clipboard and presses the keys that paste it from a cell on.
    void PasteAt(int row, int column, const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        Table().setCurrentIndex(Cell(row, column));
        QTest::keyClick(&Table(), Qt::Key_V, Qt::ControlModifier);
    }
    ModuleSettings Settings(std::size_t module) { return m_display->GetPlant().GetSettings()[module]; }

    QString File(const char* name) const { return m_directory.filePath(QLatin1String(name)); }
    void WriteFile(const char* name, const QByteArray& bytes) const {
        QFile file(File(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    std::string ReadFile(const char* name) const {
        QFile file(File(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    std::optional<ModuleProcess> m_module;
    std::unique_ptr<GTSDisplay> m_display;
    std::unique_ptr<InputsView> m_view;
};
