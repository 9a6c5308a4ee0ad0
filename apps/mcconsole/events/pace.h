// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>

/// Does something at once when it is asked for, but not more often than who looks at it can see: what is
/// asked for meanwhile is done once when the time is over. Main thread.
class Pace : public QObject {
    Q_OBJECT

  public:
    /// \a act is called no more often than once in \a interval.
    Pace(std::chrono::milliseconds interval, std::function<void()> act);

    void Ask();

  private:
    void Act();

    std::function<void()> m_act;
    QTimer m_timer;        ///< while it has to wait
    bool m_isDue = false;  ///< asked for meanwhile
};
