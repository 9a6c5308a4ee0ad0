// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

namespace vt {

/// Tells the peer of a connected socket that no more comes, and leaves the other direction open.
void EndSending(qintptr descriptor);

}  // namespace vt
