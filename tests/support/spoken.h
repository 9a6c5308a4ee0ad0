// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QAccessible>
#include <QtWidgets/QWidget>

/// What people do through assistive technology.
namespace spoken {

inline QAccessibleInterface& Of(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}
inline void Toggle(QWidget& widget) {
    Of(widget).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
}
inline void Press(QWidget& widget) {
    Of(widget).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}
/// Writes \a text in place of what is there.
inline void Write(QWidget& widget, const QString& text) {
    QAccessibleInterface& field = Of(widget);
    field.editableTextInterface()->replaceText(0, field.textInterface()->characterCount(), text);
}

}  // namespace spoken
