// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <array>

/// The question for the states of some inputs, and what counts as its answer. Pure functions of bytes.
struct ModbusQuestion {
    static constexpr int Size = 12;
    static constexpr int MaxCount = 32;
    static constexpr int HeaderSize = 6;  ///< of an answer: up to its length, which it ends with
    static constexpr int MaxAnswerSize = 9 + MaxCount / 8;  ///< with the header

    quint16 transaction = 0;
    quint8 unit = 1;
    quint8 function = 2;
    quint16 start = 0;
    quint16 count = 0;  ///< of bits: 1 to MaxCount

    std::array<quint8, Size> ToBytes() const;

    /// How many bytes an answer has that begins with the HeaderSize bytes \a header, these included; 0 if no
    /// answer to this question does.
    int AnswerSize(const quint8* header) const;
    /// Takes \a size bytes for a reading only if they are one whole answer to this very question, all of its
    /// fields as they have to be and the bits that fill its last byte 0. Then \a bits has input i in bit i.
    /// \return 0, or the error code: of the exception that the answer is, or of what is wrong with it
    unsigned CheckAnswer(const quint8* bytes, int size, unsigned* bits) const;
};
