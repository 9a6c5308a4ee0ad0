// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicenotifier.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

/// What the environment says of the watchdog, if it means this process and not one that this was started by.
std::chrono::milliseconds WatchdogTime() {
    const QByteArray process = qgetenv("WATCHDOG_PID");
    if (!process.isEmpty() && process != QByteArray::number(::getpid())) return {};
    const std::chrono::microseconds time(qgetenv("WATCHDOG_USEC").toLongLong());
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(time), {});
}

}  // namespace

// The protocol of sd_notify: a datagram of NAME=value lines to the socket that the environment names.
ServiceNotifier::ServiceNotifier() : m_socket(qgetenv("NOTIFY_SOCKET")), m_watchdogTime(WatchdogTime()) {}

void ServiceNotifier::Ready(const QString& status) {
    Tell("READY=1\nSTATUS=" + status.toUtf8());
}

void ServiceNotifier::Stopping() {
    Tell("STOPPING=1");
}

void ServiceNotifier::Alive() {
    Tell("WATCHDOG=1");
}

void ServiceNotifier::Tell(const QByteArray& message) const {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(m_socket.size());
    if (length == 0 || length >= sizeof(address.sun_path)) return;
    std::memcpy(address.sun_path, m_socket.constData(), length);
    if (address.sun_path[0] == '@') address.sun_path[0] = '\0';  // a name that is no file
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM, 0);
    if (descriptor == -1) return;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    [[maybe_unused]] const ssize_t sent =
        ::sendto(descriptor, message.constData(), static_cast<std::size_t>(message.size()), 0,
                 reinterpret_cast<const sockaddr*>(&address), size);
    ::close(descriptor);
}
