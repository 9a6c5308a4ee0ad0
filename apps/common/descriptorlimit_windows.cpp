// SPDX-License-Identifier: Apache-2.0
#include <apps/common/descriptorlimit.h>

void RaiseDescriptorLimit() {}
