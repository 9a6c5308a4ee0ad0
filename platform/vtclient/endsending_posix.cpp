// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/endsending.h>

#include <sys/socket.h>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<int>(descriptor), SHUT_WR);
}
