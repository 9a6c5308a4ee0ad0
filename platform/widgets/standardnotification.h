// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QMessageBox>

/// A message that does not wait for an answer: a window of its own that leaves the others usable, and
/// destroys itself when it is closed. Keep it in a QPointer. GUI thread only.
class MCS_WIDGETS_EXPORT StandardNotification : public QMessageBox {
    Q_OBJECT

  public:
    StandardNotification(Icon icon, const QString& title, const QString& text, StandardButtons buttons);
    ~StandardNotification() override;
};
