// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/modulesocket.h>

#include <winsock2.h>

void dimodule::ResetOnClose(qintptr descriptor) {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<SOCKET>(descriptor), SOL_SOCKET, SO_LINGER,
                 reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
}

void dimodule::HoldUnsent(qintptr descriptor, int bytes) {
    ::setsockopt(static_cast<SOCKET>(descriptor), SOL_SOCKET, SO_SNDBUF,
                 reinterpret_cast<const char*>(&bytes), sizeof bytes);
}
