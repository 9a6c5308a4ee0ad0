// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/modulesocket.h>

#include <sys/socket.h>

void dimodule::ResetOnClose(qintptr descriptor) {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(descriptor), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

void dimodule::HoldUnsent(qintptr descriptor, int bytes) {
    ::setsockopt(static_cast<int>(descriptor), SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}
