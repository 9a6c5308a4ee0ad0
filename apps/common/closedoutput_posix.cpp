// SPDX-License-Identifier: Apache-2.0
#include <apps/common/closedoutput.h>

#include <QtCore/QSocketNotifier>

#include <poll.h>
#include <unistd.h>

ClosedOutput::ClosedOutput(QObject* parent) : QObject(parent) {
    // A pipe without a reader is in error, and that wakes whoever waits for exceptions.
    auto* const notifier = new QSocketNotifier(STDOUT_FILENO, QSocketNotifier::Exception, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);  // it would go on telling
        pollfd output = {STDOUT_FILENO, 0, 0};
        if (::poll(&output, 1, 0) < 1 || (output.revents & (POLLERR | POLLHUP)) == 0) return;
        Q_EMIT Closed();
    });
}
