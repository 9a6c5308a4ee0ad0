// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>

#include <QtCore/QString>
#include <QtWidgets/QFrame>

#include <chrono>
#include <functional>
#include <vector>

class QLabel;
class QPushButton;

/// Says what has just been done, and offers for a while to undo it. Hidden otherwise. GUI thread.
class UndoBar : public QFrame {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds Patience{10};

    /// \a clock is not owned and outlives the bar.
    explicit UndoBar(IClock& clock, QWidget* parent = nullptr);

    /// Offers to undo \a what by \a undo. What was offered before is offered again once that is undone.
    void Offer(const QString& what, const std::function<void()>& undo);
    /// Names \a place from now on, where there are several; empty: none.
    void SetPlace(const QString& place) { m_place = place; }
    /// There is nothing to undo any more.
    void Withdraw();

  private:
    struct Offered {
        QString what;
        std::function<void()> undo;
    };

    void Undo();
    void Show();

    QLabel* m_text;
    QString m_place;
    QPushButton* m_button;
    ClockTimer m_timer;
    std::vector<Offered> m_offered;  ///< the last one is shown
};
