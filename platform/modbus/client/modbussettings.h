// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

class ICfg;

/// How input modules are asked.
struct ModbusSettings {
    int functionCode = 2;  ///< 1: read coils, 2: read discrete inputs
    int startAddress = 0;  ///< of the first input
    int unitId = 1;
    std::chrono::milliseconds responseTimeout{500};  ///< for connecting and answering together

    /// From the keys of the section "Modbus". What is no number, or out of range, keeps its default, with a
    /// trace.
    static ModbusSettings Read(ICfg& section);
};
