// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketcalls.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<int>(descriptor), SHUT_WR);
}

qintptr vt::AnotherDescriptor(qintptr descriptor) {
    return ::fcntl(static_cast<int>(descriptor), F_DUPFD_CLOEXEC, 0);
}

// Qt has seen to it.
void vt::KeepFromChildren(qintptr /*descriptor*/) {}

void vt::SetListenQueue(qintptr descriptor, int length) {
    ::listen(static_cast<int>(descriptor), length);
}

namespace {

constexpr int WithoutWaiting = MSG_DONTWAIT | MSG_NOSIGNAL;

ssize_t Send(int descriptor, const vt::SendPiece* pieces, int count) {
    // Nearly every time, and the system has less to look at.
    if (count == 1)
        return ::send(descriptor, pieces->data, static_cast<std::size_t>(pieces->size), WithoutWaiting);
    std::array<iovec, vt::MaxSendPieces> vectors;
    for (int i = 0; i < count; ++i) {
        // The system's structure serves for reading too, and so is not const.
        vectors[static_cast<std::size_t>(i)] = {const_cast<char*>(pieces[i].data),
                                                static_cast<std::size_t>(pieces[i].size)};
    }
    msghdr message{};
    message.msg_iov = vectors.data();
    message.msg_iovlen = static_cast<decltype(message.msg_iovlen)>(count);
    return ::sendmsg(descriptor, &message, WithoutWaiting);
}

}  // namespace

qint64 vt::SendAtOnce(qintptr descriptor, const SendPiece* pieces, int count) {
    Q_ASSERT(count <= MaxSendPieces);
    ssize_t sent = 0;
    do {
        sent = Send(static_cast<int>(descriptor), pieces, count);
    } while (sent < 0 && errno == EINTR);
    return sent > 0 ? sent : 0;
}

namespace {

/// The system gives the lowest that is free, so the last ones stay for files that are to be saved.
bool LeavesDescriptors(int any) {
    constexpr rlim_t Left = 16;
    constexpr rlim_t LeastPart = 4;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return true;
    const int next = ::fcntl(any, F_DUPFD_CLOEXEC, 0);
    if (next < 0) return false;
    ::close(next);
    return static_cast<rlim_t>(next) < limit.rlim_cur - std::min(Left, limit.rlim_cur / LeastPart);
}

}  // namespace

vt::EAccept vt::AcceptConnection(qintptr listening, qintptr* descriptor, QString* reason) {
    if (!LeavesDescriptors(static_cast<int>(listening))) {
        *reason = qt_error_string(EMFILE);
        return EAccept::Failed;
    }
    int accepted = -1;
    do {
        accepted = ::accept4(static_cast<int>(listening), nullptr, nullptr, SOCK_CLOEXEC);
    } while (accepted < 0 && errno == EINTR);
    *descriptor = accepted;
    if (accepted >= 0) return EAccept::Done;
    // Who has broken off while it waited is as good as nobody.
    if (errno == EAGAIN || errno == ECONNABORTED) return EAccept::NoneWaits;
    *reason = qt_error_string(errno);
    return EAccept::Failed;
}

int vt::MaxPending() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return vtlimits::MaxPendingConnections;
    return static_cast<int>(std::min<rlim_t>(limit.rlim_cur / 2, vtlimits::MaxPendingConnections));
}
