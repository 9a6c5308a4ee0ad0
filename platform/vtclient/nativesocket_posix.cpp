// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/nativesocket.h>

#include <sys/socket.h>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<int>(descriptor), SHUT_WR);
}

void vt::SetListenQueue(qintptr descriptor, int length) {
    ::listen(static_cast<int>(descriptor), length);
}
