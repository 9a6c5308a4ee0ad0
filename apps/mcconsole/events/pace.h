// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>

/// Does something at once when it is asked for, but not more often than who looks at it can see: what is
/// asked for meanwhile is done once when the time is over. Where nothing is asked for, nothing wakes. Main
/// thread.
class Pace : public QObject {
    Q_OBJECT

  public:
    /// \a act is called no more often than once in \a interval.
    Pace(std::chrono::milliseconds interval, std::function<void()> act);

    void Ask();

  private:
    void Act();

    std::chrono::milliseconds m_interval;
    std::function<void()> m_act;
    std::chrono::milliseconds m_lastAct;  ///< by the steady clock
    QTimer m_timer;                       ///< while what was asked for has to wait
};
