// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/question.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

bool question::IsConfirmed(QWidget* parent, const QString& title, const QString& text,
                           const QString& action) {
    // Not on the stack: it goes with its parent, which may be destroyed while it is open.
    const QPointer<QMessageBox> box(
        new QMessageBox(QMessageBox::Question, title, text, QMessageBox::NoButton, parent));
    box->setObjectName(QStringLiteral("Question"));
    box->setTextFormat(Qt::PlainText);
    const QPushButton* const act = box->addButton(action, QMessageBox::AcceptRole);
    QPushButton* const cancel =
        box->addButton(QCoreApplication::translate("Question", "Cancel"), QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    box->exec();
    if (box == nullptr) return false;
    const bool isConfirmed = box->clickedButton() == act;
    delete box.data();
    return isConfirmed;
}
