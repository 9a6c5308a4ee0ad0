// SPDX-License-Identifier: Apache-2.0
#include <tests/support/processortime.h>

#include <ctime>

double ProcessorMilliseconds() {
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}
