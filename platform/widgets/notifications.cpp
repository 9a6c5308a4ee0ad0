// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/notifications.h>

#include <QtCore/QTimer>

StandardNotification* Notifications::warning(const QString& title, const QString& text, int timeout,
                                             QMessageBox::StandardButtons buttons) {
    auto* const notification = new StandardNotification(QMessageBox::Warning, title, text, buttons);
    if (timeout > 0) QTimer::singleShot(timeout, notification, [notification] { notification->done(0); });
    notification->show();
    return notification;
}
