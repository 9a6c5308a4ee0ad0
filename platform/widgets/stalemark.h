// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

class QWidget;

/// Gives widgets that are filled by a display, and not bound to a value themselves, the look of a value-bound
/// widget that is not connected. GUI thread only.
namespace stalemark {

/// \a widget shows what is not live: it is veiled, and says so in its tool tip and to assistive technology.
MCS_WIDGETS_EXPORT void Set(QWidget& widget);
/// \a widget shows what holds.
MCS_WIDGETS_EXPORT void Clear(QWidget& widget);

}  // namespace stalemark
