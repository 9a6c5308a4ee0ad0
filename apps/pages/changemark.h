// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QFrame>

/// A bar before a widget whose content is not saved yet. Hidden at first. Belongs to the parent of the
/// widget, and follows that. GUI thread.
class ChangeMark : public QFrame {
    Q_OBJECT

  public:
    /// \a marked has a parent, with some room before it.
    explicit ChangeMark(QWidget& marked);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Place(const QWidget& marked);
};
