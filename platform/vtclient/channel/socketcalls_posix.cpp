// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketcalls.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<int>(descriptor), SHUT_WR);
}

void vt::SetListenQueue(qintptr descriptor, int length) {
    ::listen(static_cast<int>(descriptor), length);
}

qint64 vt::SendAtOnce(qintptr descriptor, const SendPiece* pieces, int count) {
    Q_ASSERT(count <= MaxSendPieces);
    std::array<iovec, MaxSendPieces> vectors;
    for (int i = 0; i < count; ++i) {
        // The system's structure serves for reading too, and so is not const.
        vectors[static_cast<std::size_t>(i)] = {const_cast<char*>(pieces[i].data),
                                                static_cast<std::size_t>(pieces[i].size)};
    }
    msghdr message{};
    message.msg_iov = vectors.data();
    message.msg_iovlen = static_cast<decltype(message.msg_iovlen)>(count);
    ssize_t sent = 0;
    do {
        sent = ::sendmsg(static_cast<int>(descriptor), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent > 0 ? sent : 0;
}

int vt::MaxPending() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return vtlimits::MaxPendingConnections;
    return static_cast<int>(std::min<rlim_t>(limit.rlim_cur / 2, vtlimits::MaxPendingConnections));
}
