// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace bench {

/// Keeps this process on one processor core: the first that it may use is 0. False, and nothing changed,
/// where there are not so many.
bool PinToCore(int core);

}  // namespace bench
