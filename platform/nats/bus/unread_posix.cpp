// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/unread.h>

#include <sys/socket.h>

#include <array>

namespace nats {

void DropUnread(int descriptor) {
    constexpr int MostReads = 256;  // of somebody who never stops
    std::array<char, 16 * 1024> room{};
    for (int i = 0; i < MostReads; ++i)
        if (::recv(descriptor, room.data(), room.size(), MSG_DONTWAIT) <= 0) return;
}

}  // namespace nats
