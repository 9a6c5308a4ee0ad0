// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QMessageBox>

/// A message that does not wait for an answer: a window of its own that leaves the others usable, and
/// destroys itself when it is closed. Keep it in a QPointer. GUI thread only.
class MCS_WIDGETS_EXPORT StandardNotification : public QMessageBox {
    Q_OBJECT

  public:
    /// \a text is shown as it is, without markup; a long one is cut.
    StandardNotification(Icon icon, const QString& title, const QString& text, StandardButtons buttons);
    ~StandardNotification() override;
};
