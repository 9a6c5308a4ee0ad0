// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

namespace dimodule {

/// The inputs of a module, and where they are found.
struct Inputs {
    static constexpr int MaxCount = 32;
    static constexpr int AnyUnit = -1;

    int count = 12;
    int start = 0;           ///< address of the first one
    int unit = AnyUnit;      ///< the only unit that answers
    quint32 states = 0xFFF;  ///< bit i is input i, and 0 if its transmitter is keyed

    quint32 All() const { return 0xFFFFFFFFu >> (MaxCount - count); }
};

}  // namespace dimodule
