// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/notifications.h>

#include <QtCore/QTimer>

StandardNotification* Notifications::warning(const QString& title, const QString& text, int timeoutMs,
                                             QMessageBox::StandardButtons buttons) {
    auto* const notification = new StandardNotification(QMessageBox::Warning, title, text, buttons);
    if (timeoutMs > 0) QTimer::singleShot(timeoutMs, notification, [notification] { notification->done(0); });
    notification->show();
    return notification;
}
