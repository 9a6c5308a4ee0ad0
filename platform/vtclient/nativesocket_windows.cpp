// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/nativesocket.h>

#include <winsock2.h>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<SOCKET>(descriptor), SD_SEND);
}

void vt::SetListenQueue(qintptr descriptor, int length) {
    ::listen(static_cast<SOCKET>(descriptor), length);
}
