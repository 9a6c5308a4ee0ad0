// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>

#include <chrono>

class QWidget;

/// Bars come and go beside the pages, and what is on these moves by the height of one: whoever has aimed at
/// something and clicks in that moment would hit what has come there in its place. That click does nothing.
/// GUI thread.
class ShiftGuard : public QObject {
    Q_OBJECT

  public:
    /// So long nobody has seen yet that something has moved.
    static constexpr std::chrono::milliseconds Grace{500};

    /// Watches \a pages, which owns it, and which moves within what it stands in. \a clock is not owned.
    ShiftGuard(IClock& clock, QWidget& pages);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BeginGrace(int top);
    bool WasAimedBefore(const QObject& target, const QPoint& place) const;

    QWidget& m_pages;
    ClockTimer m_grace;
    QPoint m_pointer;  ///< on the screen, when something moved
    int m_top = 0;     ///< what is below that has moved, in what the pages stand in
};
