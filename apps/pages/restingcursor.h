// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

/// Lets the cursor of a text field blink while somebody types, and stand still afterwards: a console that
/// nobody touches all night draws nothing for it. Main thread; one at a time, after the application.
class RestingCursor : public QObject {
    Q_OBJECT

  public:
    explicit RestingCursor(IClock& clock);
    ~RestingCursor() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Watch(QWidget* focus);
    void Blink();

    const int m_flashTime;  ///< of the system; 0 where it never blinks
    ClockTimer m_rest;
    QPointer<QWidget> m_focus;
};
