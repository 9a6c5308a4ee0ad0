// SPDX-License-Identifier: Apache-2.0
#include <apps/common/qtclock.h>

#include <platform/app/steadyclock.h>

#include <QtCore/QTimer>

#include <utility>

QtClock::QtClock() = default;

QtClock::~QtClock() = default;

std::chrono::milliseconds QtClock::Now() const {
    return steadyclock::Now<std::chrono::milliseconds>();
}

QTime QtClock::TimeOfDay() const {
    return QTime::currentTime();
}

QDateTime QtClock::Utc() const {
    return QDateTime::currentDateTimeUtc();
}

int QtClock::After(std::chrono::milliseconds delay, Action action) {
    const int number = ++m_lastNumber;
    auto* const timer = new QTimer(&m_context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, &m_context,
                     [this, number, run = std::move(action)] { Run(number, run); });
    m_timers.emplace(number, timer);
    timer->start(delay);
    return number;
}

void QtClock::Run(int number, const Action& action) {
    const Action run = action;  // outlives the timer that held it
    Cancel(number);
    run();
}

void QtClock::Cancel(int number) {
    const auto found = m_timers.find(number);
    if (found == m_timers.end()) return;
    found->second->stop();
    found->second->deleteLater();  // it may be the one that runs
    m_timers.erase(found);
}
