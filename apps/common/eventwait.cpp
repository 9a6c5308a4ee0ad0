// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventwait.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>

namespace eventwait {

namespace {

// No loop is being executed to which what is to be deleted later could wait for the return.
void RunTurn(QEventLoop::ProcessEventsFlags flags) {
    QCoreApplication::processEvents(flags);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

bool Until(const std::function<bool()>& isDone, std::chrono::milliseconds time,
           std::chrono::milliseconds interval) {
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.setTimerType(Qt::PreciseTimer);
    deadline.start(time);
    QTimer wake;
    if (interval != Never) wake.start(interval);
    while (!isDone()) {
        if (!deadline.isActive()) return false;
        RunTurn(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void Turn() {
    RunTurn(QEventLoop::AllEvents);
}

}  // namespace eventwait
