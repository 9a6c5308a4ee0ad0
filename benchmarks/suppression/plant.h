// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace bench::plant {

constexpr int Modules = 32;
constexpr int Inputs = 6;         ///< that are polled of each
constexpr int PollInterval = 10;  ///< ms
constexpr int Patience = 10000;   ///< ms, for what happens at once unless something is broken

/// Counted from 0.
inline QString AddressOf(int module) {
    return QStringLiteral("127.0.0.%1").arg(module + 1);
}
/// The input of a module to which a transmitter is wired.
constexpr int InputOf(int module) {
    return module % Inputs;
}

}  // namespace bench::plant
