// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// What Qt's sockets do not offer.
namespace vt {

/// Tells the peer of a connected socket that no more comes, and leaves the other direction open.
void EndSending(qintptr descriptor);
/// Lets up to \a length connections wait for a listening socket to accept them; the system may allow fewer.
void SetListenQueue(qintptr descriptor, int length);

}  // namespace vt
