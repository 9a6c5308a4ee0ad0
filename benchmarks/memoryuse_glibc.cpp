// SPDX-License-Identifier: Apache-2.0
#include "memoryuse.h"

#include <malloc.h>

std::size_t HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}
