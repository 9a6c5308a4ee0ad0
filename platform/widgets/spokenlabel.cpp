// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/spokenlabel.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QLabel>

namespace {

class SpokenLabel final : public QAccessibleWidget {
  public:
    explicit SpokenLabel(QLabel& label) : QAccessibleWidget(&label, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
        const QString name = widget()->accessibleName();
        const QString shown = static_cast<QLabel*>(widget())->text();
        return name.isEmpty() || shown.isEmpty() ? name + shown : name + QStringLiteral(": ") + shown;
    }
};

}  // namespace

void spokenlabel::Install(QLabel& label) {
    QAccessible::registerAccessibleInterface(new SpokenLabel(label));  // which owns it
}

void spokenlabel::SetText(QLabel& label, const QString& text) {
    if (text == label.text()) return;
    label.setText(text);
    QAccessibleEvent event(&label, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}
