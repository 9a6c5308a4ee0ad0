// SPDX-License-Identifier: Apache-2.0
// Takes the place of the C library's allocation functions, which go by a second name there. Exported, or the
// libraries would go on with the first.
#include <tests/support/allocationcounter.h>

#include <QtCore/qglobal.h>

extern "C" {
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);       // NOLINT(bugprone-reserved-identifier)

Q_DECL_EXPORT void* malloc(std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_malloc(size);
}

Q_DECL_EXPORT void* calloc(std::size_t count, std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_calloc(count, size);
}

Q_DECL_EXPORT void* realloc(void* block, std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_realloc(block, size);
}
}

void allocationcounter::InstallHooks() {}
