// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>
#include <QtCore/QtEndian>

#include <cstring>

namespace vt {

/// With what every CBOR element begins: what it is, and a number, a length or a count.
struct CborHead {
    /// By their number in the first byte. None: there is no element, or none that can be read.
    enum EType : quint8 { Unsigned, Negative, Bytes, Text, Array, Map, Tag, Simple, None };
    /// The lower bits of the first byte: the number itself, or where it is.
    enum EInfo : quint8 {
        False = 20,
        True = 21,
        Null = 22,
        OneByte = 24,  ///< follows, and so on
        HalfFloat = 25,
        SingleFloat = 26,
        DoubleFloat = 27,
        Open = 31  ///< no length: a break ends it
    };
    static constexpr quint8 Break = 0xff;
    static constexpr int Longest = 9;

    static constexpr quint8 FirstByte(EType type, unsigned info) {
        return static_cast<quint8>(static_cast<unsigned>(type) << 5U | info);
    }
    /// Writes the shortest head of that \a type with \a number at \a at, where there is room for the longest.
    /// \return where it ends.
    static char* Write(char* at, EType type, quint64 number) {
        if (number < OneByte) {
            *at = static_cast<char>(FirstByte(type, static_cast<unsigned>(number)));
            return at + 1;
        }
        if (number <= 0xffU) return Put(at, FirstByte(type, OneByte), static_cast<quint8>(number));
        if (number <= 0xffffU) return Put(at, FirstByte(type, OneByte + 1U), static_cast<quint16>(number));
        if (number <= 0xffffffffU)
            return Put(at, FirstByte(type, OneByte + 2U), static_cast<quint32>(number));
        return Put(at, FirstByte(type, OneByte + 3U), number);
    }
    static char* WriteInteger(char* at, qint64 number) {
        if (number >= 0) return Write(at, Unsigned, static_cast<quint64>(number));
        return Write(at, Negative, static_cast<quint64>(-1 - number));
    }
    static char* WriteDouble(char* at, double number) {
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return Put(at, FirstByte(Simple, DoubleFloat), bits);
    }
    /// Writes \a first and \a number behind it, and likewise.
    template <class Number>
    static char* Put(char* at, quint8 first, Number number) {
        *at = static_cast<char>(first);
        qToBigEndian(number, at + 1);
        return at + 1 + sizeof number;
    }

    EType type = None;
    quint8 info = 0;
    int size = 0;          ///< bytes of the head
    quint64 argument = 0;  ///< also the bits of a float

    bool IsFloat() const { return type == Simple && info >= HalfFloat && info <= DoubleFloat; }

    /// Reads the head at \a at. False, with None, if \a end comes before its end or there is no such head.
    bool Read(const quint8* at, const quint8* end) {
        *this = CborHead();
        if (at == end) return false;
        const auto kind = static_cast<EType>(*at >> 5U);
        const auto low = static_cast<quint8>(*at & 31U);
        quint64 number = low;
        int length = 1;
        if (low >= OneByte) {
            if (low > DoubleFloat) {
                if (low != Open || !HasLength(kind)) return false;
            } else {
                length += 1 << (low - OneByte);
                if (end - at < length) return false;
                number = NumberBehind(at, low);
                if (kind == Simple && low == OneByte && number < FirstLongSimple) return false;
            }
        }
        type = kind;
        info = low;
        size = length;
        argument = number;
        return true;
    }

  private:
    static constexpr quint64 FirstLongSimple = 32;  // those below have a shorter form

    static bool HasLength(EType kind) { return kind >= Bytes && kind <= Map; }
    static quint64 NumberBehind(const quint8* at, quint8 low) {
        switch (low) {
            case OneByte:
                return at[1];
            case HalfFloat:
                return qFromBigEndian<quint16>(at + 1);
            case SingleFloat:
                return qFromBigEndian<quint32>(at + 1);
            default:
                return qFromBigEndian<quint64>(at + 1);
        }
    }
};

}  // namespace vt
