// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Counts what this thread allocates on the heap, in any library, while it lives. One at a time.
class AllocationCounter {
  public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    static std::size_t Count();
};

/// While it lives, the \a number-th (from 1) allocation with new (std::nothrow) on this thread fails.
class AllocationFailure {
  public:
    explicit AllocationFailure(int number);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
};

namespace allocationcounter {

/// For the hooks: called on every allocation.
void OnAllocation();
/// Installs the hooks where that takes a call.
void InstallHooks();

}  // namespace allocationcounter
