// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <bitset>
#include <random>

/// The states of inputs that a module takes on. So chosen that what a fault makes of them shows: neither
/// their opposite, nor a part of them filled up with zeros, is one of them.
namespace soak::words {

constexpr int Inputs = 12;
constexpr int Released = 5;  ///< so many inputs read 1
constexpr quint32 AllReleased = (1U << Inputs) - 1;

inline bool IsOne(quint32 word) {
    return word >> Inputs == 0 && std::bitset<Inputs>(word).count() == Released;
}

inline quint32 Draw(std::mt19937& random) {
    for (;;) {
        const quint32 word = random() & AllReleased;
        if (IsOne(word)) return word;
    }
}

}  // namespace soak::words
