// SPDX-License-Identifier: Apache-2.0
#include <tests/support/waituntil.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>

namespace {

// No loop is being executed to which what is to be deleted later could wait for the return.
void Turn(QEventLoop::ProcessEventsFlags flags) {
    QCoreApplication::processEvents(flags);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

bool WaitUntil(const std::function<bool()>& isDone, int milliseconds) {
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.setTimerType(Qt::PreciseTimer);
    deadline.start(milliseconds);
    while (!isDone()) {
        if (!deadline.isActive()) return false;
        Turn(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void RunTurns(int count) {
    for (int i = 0; i < count; ++i)
        Turn(QEventLoop::AllEvents);
}
