// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/spokenwidget.h>

#include <QtWidgets/QWidget>

/// The toolkit's own constructors tell of the widget already, and so made what speaks for it until then.
void spokenwidget::Announce(QWidget& widget, QAccessible::InterfaceFactory factory) {
    QAccessible::installFactory(factory);  // which is kept once, until the application object goes
    if (!QAccessible::isActive()) return;
    QAccessibleInterface* const early = QAccessible::queryAccessibleInterface(&widget);
    if (early != nullptr) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}
