// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/qteventloop.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QRandomGenerator>

namespace vt {

QtEventLoop::QtEventLoop() {
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_taker != nullptr) m_taker->OnDeadline();
    });
}

void QtEventLoop::RequestTurn() {
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void QtEventLoop::customEvent(QEvent* /*event*/) {
    if (m_taker != nullptr) m_taker->OnTurn();
}

void QtEventLoop::SetDeadline(int milliseconds) {
    if (milliseconds < 0)
        m_timer.stop();
    else
        m_timer.start(milliseconds);
}

double QtEventLoop::Random() {
    return QRandomGenerator::global()->generateDouble();
}

}  // namespace vt
