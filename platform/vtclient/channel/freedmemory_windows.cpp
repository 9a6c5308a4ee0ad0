// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/freedmemory.h>

#include <windows.h>

void vt::GiveFreedMemoryBack() {
    HeapCompact(GetProcessHeap(), 0);
}
