// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

class QWidget;

/// A letter with Alt belongs to a button or a menu. Where that is gone, or cannot be used, it does nothing:
/// a field would take it for text otherwise, as the "k" of 1200k. One for all windows of a program. GUI
/// thread.
class AltKeys : public QObject {
    Q_OBJECT

  public:
    /// Watches whatever has the focus.
    explicit AltKeys(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Watch(QWidget* before, QWidget* now);
};
