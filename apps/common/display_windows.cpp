// SPDX-License-Identifier: Apache-2.0
#include <apps/common/display.h>

bool HasDisplay() {
    return true;
}
