// SPDX-License-Identifier: Apache-2.0
// Takes the place of the C library's allocation functions, which go by a second name there.
#include <tests/support/allocationcounter.h>

extern "C" {
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);       // NOLINT(bugprone-reserved-identifier)

void* malloc(std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    allocationcounter::OnAllocation();
    return __libc_realloc(block, size);
}
}

void allocationcounter::InstallHooks() {}
