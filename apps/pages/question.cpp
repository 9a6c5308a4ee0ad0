// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/question.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace {

constexpr char PlaceProperty[] = "questionPlace";

/// That of \a widget, or of the nearest that it is in.
QString PlaceOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QString place = widget->property(PlaceProperty).toString();
        if (!place.isEmpty()) return place;
    }
    return QString();
}

}  // namespace

void question::SetPlace(QWidget& widget, const QString& place) {
    widget.setProperty(PlaceProperty, place);
}

bool question::IsConfirmed(QWidget* parent, const QString& title, const QString& text,
                           const QString& action) {
    const QString place = PlaceOf(parent);
    const QString asked = place.isEmpty() ? text
                                          : QCoreApplication::translate("Question", "At %1:").arg(place) +
                                                QLatin1Char('\n') + text;
    // Not on the stack: it goes with its parent, which may be destroyed while it is open.
    const QPointer<QMessageBox> box(
        new QMessageBox(QMessageBox::Question, title, asked, QMessageBox::NoButton, parent));
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

void question::Withdraw(const QWidget& widget) {
    for (auto* const box : widget.findChildren<QMessageBox*>(QStringLiteral("Question")))
        box->reject();
}
