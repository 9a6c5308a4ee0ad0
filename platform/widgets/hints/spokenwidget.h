// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QAccessible>

class QWidget;

namespace spokenwidget {

/// Has assistive technology speak with \a widget by what \a factory makes. Comes first in the constructor of
/// the widget's class.
void Announce(QWidget& widget, QAccessible::InterfaceFactory factory);

}  // namespace spokenwidget
