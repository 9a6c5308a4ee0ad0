// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>

#include <QtCore/QObject>

#include <map>

class QTimer;

/// The real time, through the event loop of the application.
class QtClock : public IClock {
  public:
    QtClock();
    ~QtClock() override;

    std::chrono::milliseconds Now() const override;
    QTime TimeOfDay() const override;
    QDateTime Utc() const override;
    int After(std::chrono::milliseconds delay, Action action) override;
    void Cancel(int number) override;

  private:
    void Run(int number, const Action& action);

    QObject m_context;  ///< owns the timers
    std::map<int, QTimer*> m_timers;
    int m_lastNumber = 0;
};
