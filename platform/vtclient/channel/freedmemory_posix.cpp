// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/freedmemory.h>

#include <cstdlib>  // which says what library this is

#ifdef __GLIBC__
#include <malloc.h>
#endif

void vt::GiveFreedMemoryBack() {
#ifdef __GLIBC__
    // Else what was freed in the middle of the heap stays, however much that is.
    ::malloc_trim(0);
#endif
}
