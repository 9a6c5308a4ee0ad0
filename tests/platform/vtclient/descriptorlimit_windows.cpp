// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/descriptorlimit.h>

// There is none.
void RaiseDescriptorLimit() {}
