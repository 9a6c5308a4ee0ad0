// SPDX-License-Identifier: Apache-2.0
#include <tests/support/allocationcounter.h>

#include <cstdlib>
#include <new>

namespace {

thread_local bool isCounting = false;
thread_local std::size_t allocations = 0;
thread_local int untilFailure = 0;

}  // namespace

void allocationcounter::OnAllocation() {
    if (isCounting) ++allocations;
}

AllocationCounter::AllocationCounter() {
    allocationcounter::InstallHooks();
    allocations = 0;
    isCounting = true;
}

AllocationCounter::~AllocationCounter() {
    isCounting = false;
}

std::size_t AllocationCounter::Count() {
    return allocations;
}

AllocationFailure::AllocationFailure(int number) {
    allocationcounter::InstallHooks();
    untilFailure = number;
}

AllocationFailure::~AllocationFailure() {
    untilFailure = 0;
}

// Replaces the global operator in all of the program, libraries included.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    if (untilFailure > 0 && --untilFailure == 0) return nullptr;
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
