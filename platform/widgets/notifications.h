// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/standardnotification.h>
#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

/// Tells the user something without stopping what goes on. GUI thread only.
class MCS_WIDGETS_EXPORT Notifications {
  public:
    Notifications() = delete;

    /// Shows a warning. \a timeoutMs: after how long it closes by itself; 0: never.
    /// \return the notification, which destroys itself when it is closed.
    static StandardNotification* warning(
        const QString& title, const QString& text, int timeoutMs = 0,
        QMessageBox::StandardButtons buttons = QMessageBox::StandardButtons(QMessageBox::Ok));
};
