// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventwait.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>

namespace eventwait {

namespace {

/// \return whether the system had anything to tell.
bool RunTurn(QEventLoop::ProcessEventsFlags flags) {
    const bool wasTold = QAbstractEventDispatcher::instance()->processEvents(flags);
    // No loop is being executed to which what is to be deleted later could wait for the return.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return wasTold;
}

}  // namespace

// On Windows a turn may take the system's word that something was posted and leave that to the next turn,
// which delivers it, and waits all the same: so a turn only waits after one that was told nothing.
bool Until(const std::function<bool()>& isDone, std::chrono::milliseconds time,
           std::chrono::milliseconds interval) {
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.setTimerType(Qt::PreciseTimer);
    deadline.start(time);
    QTimer wake;
    if (interval != Never) wake.start(interval);
    bool mayBeMore = true;
    while (!isDone()) {
        if (!deadline.isActive()) return false;
        mayBeMore = RunTurn(mayBeMore ? QEventLoop::AllEvents : QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void Turn() {
    RunTurn(QEventLoop::AllEvents);
}

}  // namespace eventwait
