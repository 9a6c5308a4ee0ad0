// SPDX-License-Identifier: Apache-2.0
// Linked into the server, is an operator at its window: a test cannot reach into another process with a
// mouse. Assigns the frequency in MCS_TEST_FREQUENCY, MHz, to the input 4 of the first data module.
#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>

#include <chrono>

namespace {

constexpr int AssignedInput = 4;

/// A module that fails opens a warning, now or in a moment, which may be in the way.
void CloseWarnings() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox*>(window) != nullptr && window->isVisible()) window->close();
}

/// True once the editor is closed.
bool FillEditor(const QByteArray& frequency) {
    QWidget* const editor = QApplication::activeModalWidget();
    auto* const table = editor != nullptr ? editor->findChild<QTableWidget*>() : nullptr;
    if (table == nullptr) return false;
    table->setCurrentCell(0, AssignedInput);
    table->edit(table->currentIndex());
    auto* const field = table->viewport()->findChild<QLineEdit*>();
    if (field == nullptr) return false;
    field->selectAll();
    QTest::keyClicks(field, QString::fromLatin1(frequency));
    QTest::keyClick(field, Qt::Key_Return);
    // A warning that opened meanwhile took the keys.
    if (table->currentItem()->text() != QString::fromLatin1(frequency)) return false;
    QTest::mouseClick(editor->findChild<QPushButton*>(QStringLiteral("ok")), Qt::LeftButton);
    return true;
}

void OpenEditor() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        auto* const pages = window->findChild<QTabWidget*>(QStringLiteral("Pages"));
        auto* const button = window->findChild<QPushButton*>(QStringLiteral("assignInputs"));
        if (pages == nullptr || button == nullptr || !window->isVisible()) continue;
        pages->setCurrentIndex(pages->count() - 1);
        QTest::mouseClick(button, Qt::LeftButton);
        return;
    }
}

/// A timer is not told again while it waits for a dialog that it opened: each look has its own.
void LookLater(const QByteArray& frequency) {
    constexpr std::chrono::milliseconds interval(20);
    QTimer::singleShot(interval, QCoreApplication::instance(), [frequency] {
        CloseWarnings();
        if (FillEditor(frequency)) return;
        LookLater(frequency);
        if (QApplication::activeModalWidget() == nullptr) OpenEditor();
    });
}

void SitDown() {
    const QByteArray frequency = qgetenv("MCS_TEST_FREQUENCY");
    if (!frequency.isEmpty() && qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr)
        LookLater(frequency);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(SitDown)
