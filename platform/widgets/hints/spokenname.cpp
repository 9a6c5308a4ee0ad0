// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/spokenname.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

bool spokenname::IsNamedOtherwise(const QWidget& widget) {
    if (qobject_cast<const QLabel*>(&widget) != nullptr) return true;  // its text is what matters
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    if (button != nullptr && !button->text().isEmpty()) return true;
    if (widget.parentWidget() == nullptr) return false;
    for (const QObject* const sibling : widget.parentWidget()->children()) {
        const auto* const label = qobject_cast<const QLabel*>(sibling);
        if (label != nullptr && label->buddy() == &widget) return true;
    }
    return false;
}
