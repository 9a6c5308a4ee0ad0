// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace bench {

/// Seconds that this process has kept processors busy, for itself and in the system on its behalf.
double CpuSeconds();

}  // namespace bench
