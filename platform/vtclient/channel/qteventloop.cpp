// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/qteventloop.h>

#include <platform/app/steadyclock.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QRandomGenerator>

namespace vt {

QtEventLoop::QtEventLoop() {
    m_again.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, &QtEventLoop::HaveTurn);
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_taker != nullptr) m_taker->OnDeadline();
    });
}

// What asks for another turn in its turn has it in the next pass of the loop: an event posted by an event is
// handled in the same one, and others would wait.
void QtEventLoop::RequestTurn() {
    if (m_isInTurn) return m_again.start(0);
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void QtEventLoop::customEvent(QEvent* /*event*/) {
    HaveTurn();
}

void QtEventLoop::HaveTurn() {
    m_isInTurn = true;
    if (m_taker != nullptr) m_taker->OnTurn();
    m_isInTurn = false;
}

std::chrono::microseconds QtEventLoop::Now() const {
    return steadyclock::Now<std::chrono::microseconds>();
}

void QtEventLoop::SetDeadline(std::optional<std::chrono::milliseconds> delay) {
    if (delay)
        m_timer.start(*delay);
    else
        m_timer.stop();
}

double QtEventLoop::Random() {
    return QRandomGenerator::global()->generateDouble();
}

}  // namespace vt
