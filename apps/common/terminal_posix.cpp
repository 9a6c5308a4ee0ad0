// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <QtCore/QTextCodec>
#include <QtCore/QtGlobal>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>

namespace terminal {

namespace {

/// Whether a write that failed may be tried again; waits until there is a point in it.
bool MayRetry(int descriptor) {
    if (errno == EINTR) return true;
    if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
    // Somebody who shares the terminal or pipe with us has switched it to not blocking.
    pollfd waiting = {descriptor, POLLOUT, 0};
    return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

bool WriteAll(int descriptor, const QByteArray& bytes) {
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t written =
            ::write(descriptor, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (written >= 0)
            done += static_cast<int>(written);
        else if (!MayRetry(descriptor))
            return false;
    }
    return true;
}

}  // namespace

void system::PrepareStreams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) != -1) continue;
        // The lowest free number is the one that is closed, since those below it are open by now.
        [[maybe_unused]] const int opened = ::open("/dev/null", O_RDWR);
    }
    ::signal(SIGPIPE, SIG_IGN);
    // Who may write no more into a file is told so by the write.
    ::signal(SIGXFSZ, SIG_IGN);
    // What is written is UTF-8 in any locale, so what is read has to be.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void system::RestoreStreams() {}

std::istream& GetInput() {
    return std::cin;
}

bool IsOutputTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

bool TakesColour() {
    return IsOutputTerminal() && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

int GetWidth() {
    winsize size = {};
    return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool WriteOutput(const QByteArray& bytes, QString* error) {
    if (WriteAll(STDOUT_FILENO, bytes)) return true;
    if (errno != EPIPE) *error = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

void system::WriteError(const QByteArray& bytes) {
    WriteAll(STDERR_FILENO, bytes);
}

}  // namespace terminal
