// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/wire/bytebuffer.h>
#include <platform/vtclient/wire/cborhead.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <cstring>

namespace vt {

/// Writes the few forms of CBOR that messages are made of. Each is the shortest one, as Qt's writer has it;
/// that one reaches its bytes through a device, which costs more than all the rest of a change.
class MCS_CONNECTION_EXPORT CborOutput {
  public:
    int Size() const { return m_bytes.Size(); }
    const char* Data() const { return m_bytes.Data(); }
    /// Takes back what was written beyond \a size, which was the size between two elements.
    void Truncate(int size) { m_bytes.Truncate(size); }
    void RemoveFront(int size) { m_bytes.RemoveFront(size); }
    void Clear() { m_bytes.Clear(); }
    QByteArray Take() { return m_bytes.Take(); }
    void TakeInto(QByteArray* bytes) { m_bytes.TakeInto(bytes); }
    /// Appends elements that were written before.
    void AppendRaw(const char* data, int size) { m_bytes.Append(data, size); }

    void Unsigned(quint64 number) { WriteHead(CborHead::Unsigned, number); }
    void Integer(qint64 number) {
        if (number >= 0) return WriteHead(CborHead::Unsigned, static_cast<quint64>(number));
        WriteHead(CborHead::Negative, static_cast<quint64>(-1 - number));
    }
    void Boolean(bool flag) { WriteByte(Byte(CborHead::Simple, flag ? CborHead::True : CborHead::False)); }
    void Null() { WriteByte(Byte(CborHead::Simple, CborHead::Null)); }
    void Double(double number) {
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        Put(m_bytes.Reserve(LongestHead), Byte(CborHead::Simple, CborHead::DoubleFloat), bits);
    }
    /// Half a character becomes a question mark.
    void Text(const QString& text);

    /// What follows are the elements of an array of \a count.
    void Array(quint64 count) { WriteHead(CborHead::Array, count); }
    /// What follows, until it is closed, are those of an array.
    void OpenArray() { WriteByte(Byte(CborHead::Array, CborHead::Open)); }
    void CloseArray() { WriteByte(CborHead::Break); }

  private:
    static constexpr int LongestHead = 9;

    static quint8 Byte(CborHead::EType type, unsigned info) {
        return static_cast<quint8>(static_cast<unsigned>(type) << 5U | info);
    }
    void WriteByte(quint8 byte) {
        *m_bytes.Reserve(1) = static_cast<char>(byte);
        m_bytes.Wrote(1);
    }
    template <class Number>
    void Put(char* at, quint8 first, Number number) {
        *at = static_cast<char>(first);
        qToBigEndian(number, at + 1);
        m_bytes.Wrote(1 + static_cast<int>(sizeof number));
    }
    void WriteHead(CborHead::EType type, quint64 number) {
        char* const at = m_bytes.Reserve(LongestHead);
        if (number < CborHead::OneByte) {
            *at = static_cast<char>(Byte(type, static_cast<unsigned>(number)));
            m_bytes.Wrote(1);
        } else if (number <= 0xffU) {
            Put(at, Byte(type, CborHead::OneByte), static_cast<quint8>(number));
        } else if (number <= 0xffffU) {
            Put(at, Byte(type, CborHead::OneByte + 1U), static_cast<quint16>(number));
        } else if (number <= 0xffffffffU) {
            Put(at, Byte(type, CborHead::OneByte + 2U), static_cast<quint32>(number));
        } else {
            Put(at, Byte(type, CborHead::OneByte + 3U), number);
        }
    }
    bool WriteIfAscii(const QString& text);

    ByteBuffer m_bytes;
};

}  // namespace vt
