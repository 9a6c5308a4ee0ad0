// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>

#include <QtCore/QString>
#include <QtWidgets/QFrame>

#include <chrono>
#include <functional>

class QLabel;
class QPushButton;

/// Says what has just been done, and offers for a while to undo it. Hidden otherwise. GUI thread.
class UndoBar : public QFrame {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds Patience{10};

    /// \a clock is not owned and outlives the bar.
    explicit UndoBar(IClock& clock, QWidget* parent = nullptr);

    /// Offers to undo \a what by \a undo, in place of what was offered before.
    void Offer(const QString& what, const std::function<void()>& undo);
    /// Names \a place from now on, where there are several; empty: none.
    void SetPlace(const QString& place) { m_place = place; }
    /// There is nothing to undo any more.
    void Withdraw();

  private:
    void Undo();

    QLabel* m_text;
    QString m_place;
    QPushButton* m_button;
    ClockTimer m_timer;
    std::function<void()> m_undo;
};
