// SPDX-License-Identifier: Apache-2.0
#include <tests/support/allocationcounter.h>

extern "C" int __sanitizer_install_malloc_and_free_hooks(  // NOLINT(bugprone-reserved-identifier)
    void (*onMalloc)(const volatile void*, std::size_t), void (*onFree)(const volatile void*));

void allocationcounter::InstallHooks() {
    static const int isInstalled = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void* /*block*/, std::size_t /*size*/) { OnAllocation(); },
        [](const volatile void* /*block*/) {});
    static_cast<void>(isInstalled);
}
