// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace nats {

/// Drops what has come to the socket \a descriptor and was not read, without waiting for more.
void DropUnread(int descriptor);

}  // namespace nats
