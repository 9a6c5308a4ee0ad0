// SPDX-License-Identifier: Apache-2.0
#include "memoryuse.h"

#include <windows.h>

#include <vector>

std::size_t HeapInUse() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t bytes = 0;
    for (const HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heap, &entry) != 0)
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData + entry.cbOverhead;
    }
    return bytes;
}
