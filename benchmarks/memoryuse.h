// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Bytes that the heap has handed out, with its overhead per block.
std::size_t HeapInUse();
