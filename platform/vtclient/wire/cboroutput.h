// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/bytebuffer.h>
#include <platform/vtclient/wire/cborhead.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vt {

/// Writes the few forms of CBOR that messages are made of. Each is the shortest one, as Qt's writer has it;
/// that one reaches its bytes through a device, which costs more than all the rest of a change.
class CborOutput {
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
        m_bytes.WroteTo(CborHead::WriteInteger(m_bytes.Reserve(CborHead::Longest), number));
    }
    void Boolean(bool flag) { WriteByte(Byte(CborHead::Simple, flag ? CborHead::True : CborHead::False)); }
    void Null() { WriteByte(Byte(CborHead::Simple, CborHead::Null)); }
    void Double(double number) {
        m_bytes.WroteTo(CborHead::WriteDouble(m_bytes.Reserve(CborHead::Longest), number));
    }
    /// The same as Unsigned(number) and Integer(), Boolean() or Double() behind it.
    template <class Content>
    void UnsignedAndThen(quint64 number, Content content) {
        char* const at = CborHead::Write(m_bytes.Reserve(2 * CborHead::Longest), CborHead::Unsigned, number);
        m_bytes.WroteTo(Write(at, content));
    }
    /// Half a character becomes a question mark.
    void Text(const QString& text);

    /// What follows are the elements of an array of \a count.
    void Array(quint64 count) { WriteHead(CborHead::Array, count); }
    /// What follows, until it is closed, are those of an array.
    void OpenArray() { WriteByte(Byte(CborHead::Array, CborHead::Open)); }
    void CloseArray() { WriteByte(CborHead::Break); }

  private:
    static char* Write(char* at, int content) { return CborHead::WriteInteger(at, content); }
    static char* Write(char* at, double content) { return CborHead::WriteDouble(at, content); }
    static char* Write(char* at, bool content) {
        *at = static_cast<char>(Byte(CborHead::Simple, content ? CborHead::True : CborHead::False));
        return at + 1;
    }
    static quint8 Byte(CborHead::EType type, unsigned info) { return CborHead::FirstByte(type, info); }
    void WriteByte(quint8 byte) {
        *m_bytes.Reserve(1) = static_cast<char>(byte);
        m_bytes.Wrote(1);
    }
    void WriteHead(CborHead::EType type, quint64 number) {
        m_bytes.WroteTo(CborHead::Write(m_bytes.Reserve(CborHead::Longest), type, number));
    }
    bool WriteIfAscii(const QString& text);

    ByteBuffer m_bytes;
};

}  // namespace vt
