// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace bench {

/// Keeps this process on one processor core: the first that it may use is 0. False, and nothing changed,
/// where there are not so many.
bool PinToCore(int core);

/// Has this process, and all threads that it starts from now on, take only what others leave of the cores.
void YieldCores();

}  // namespace bench
