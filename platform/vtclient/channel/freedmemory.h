// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vt {

/// Gives memory that was freed back to the system, where that does not happen by itself. Takes time: for now
/// and then.
void GiveFreedMemoryBack();

}  // namespace vt
