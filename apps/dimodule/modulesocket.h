// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

namespace dimodule {

/// Makes the end of a connected socket, once it is closed, a reset: what is unsent is lost, and the peer gets
/// an error instead of the end.
void ResetOnClose(qintptr descriptor);

/// Lets the system hold about \a bytes of what the peer of a connected socket does not read. Qt leaves that
/// alone on Windows.
void HoldUnsent(qintptr descriptor, int bytes);

}  // namespace dimodule
