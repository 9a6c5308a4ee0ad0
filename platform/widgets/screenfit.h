// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QRect>

#include <vector>

class QWidget;

/// Windows that can be reached. A placement that was stored may lie on a screen that is gone, or hold any
/// numbers: the application calls this once it has restored its windows. GUI thread only.
namespace screenfit {

/// Leaves \a window where it is if the user can get hold of its title bar and it is no larger than its
/// screen. Otherwise makes it fit the nearest screen and moves it there; a minimized, maximized or full
/// screen window stays that, and what it returns to fits. Before or after it was shown.
MCS_WIDGETS_EXPORT void BringOntoScreen(QWidget& window);

/// The same for a window's \a frame: where it is to be. \a screens are what is free of task bars on each,
/// the preferred one first; without any, the frame stays. Numbers may be as large as they can.
MCS_WIDGETS_EXPORT QRect Fitted(const QRect& frame, const std::vector<QRect>& screens);

}  // namespace screenfit
