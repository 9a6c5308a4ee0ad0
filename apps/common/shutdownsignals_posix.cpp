// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownsignals.h>

#include <QtCore/QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace {

constexpr std::array<int, 3> Signals = {SIGINT, SIGTERM, SIGHUP};

// What the handler may touch: set before it is installed, and cleared after it is gone.
volatile std::sig_atomic_t writeEnd = -1;
int readEnd = -1;
std::array<struct sigaction, Signals.size()> actionsBefore;

extern "C" void WakeEventLoop(int signal) {
    const int errnoBefore = errno;
    const char byte = static_cast<char>(signal);
    // If the pipe is full, the reader will be woken all the same.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = errnoBefore;
}

bool OpenPipe() {
    std::array<int, 2> ends = {-1, -1};
    if (::pipe(ends.data()) != 0) return false;
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, ::fcntl(end, F_GETFL) | O_NONBLOCK);
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    return true;
}

void InstallHandlers(bool isHangUpTold) {
    struct sigaction action = {};
    action.sa_handler = WakeEventLoop;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < Signals.size(); ++i) {
        ::sigaction(Signals[i], nullptr, &actionsBefore[i]);
        // SIGINT is taken even if it was ignored: shells start background jobs of scripts like that, and
        // whoever sends it to such a job means it.
        if (Signals[i] == SIGHUP && actionsBefore[i].sa_handler == SIG_IGN) continue;
        const bool isRepeated = Signals[i] == SIGHUP && isHangUpTold;
        action.sa_flags = isRepeated ? SA_RESTART : SA_RESTART | static_cast<int>(SA_RESETHAND);
        ::sigaction(Signals[i], &action, nullptr);
    }
}

}  // namespace

ShutdownSignals::ShutdownSignals(EHangUp hangUp, QObject* parent) : QObject(parent) {
    Q_ASSERT_X(writeEnd == -1, Q_FUNC_INFO, "one at a time");
    if (!OpenPipe()) return;  // out of file descriptors: the signals then end the process as they always do
    auto* const notifier = new QSocketNotifier(readEnd, QSocketNotifier::Read, this);
    const bool isHangUpTold = hangUp == EHangUp::IsTold;
    connect(notifier, &QSocketNotifier::activated, this, [this, isHangUpTold] {
        std::array<char, 16> signalsRead;
        const ssize_t count = ::read(readEnd, signalsRead.data(), signalsRead.size());
        const auto isHangUp = [isHangUpTold](char signal) { return isHangUpTold && signal == SIGHUP; };
        const auto end = signalsRead.begin() + std::max<ssize_t>(count, 0);
        const bool isToEnd = !std::all_of(signalsRead.begin(), end, isHangUp);
        if (std::any_of(signalsRead.begin(), end, isHangUp)) Q_EMIT HungUp();
        if (isToEnd) Q_EMIT ShutdownRequested();
    });
    InstallHandlers(isHangUpTold);
}

ShutdownSignals::~ShutdownSignals() {
    if (writeEnd == -1) return;
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &actionsBefore[i], nullptr);
    qDeleteAll(findChildren<QSocketNotifier*>());  // before what it watches is closed
    ::close(writeEnd);
    ::close(readEnd);
    writeEnd = readEnd = -1;
}
