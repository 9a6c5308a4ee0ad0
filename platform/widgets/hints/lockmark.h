// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

/// A small lock at the end of a widget whose value may not be changed from here. Hidden at first. Belongs to
/// the widget, and lets everything through to it.
class LockMark : public QWidget {
  public:
    static constexpr int Room = 18;  ///< pixels that it takes at the end of a widget

    explicit LockMark(QWidget& locked);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Place(const QWidget& locked);
};
