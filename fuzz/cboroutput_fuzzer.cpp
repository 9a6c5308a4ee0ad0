// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>

#include <platform/vtclient/wire/cboroutput.h>

#include <QtCore/QBuffer>
#include <QtCore/QCborStreamWriter>

#include <algorithm>
#include <cstring>

namespace {

/// Takes numbers and texts of whatever bits from the front of some bytes.
class Source {
  public:
    Source(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}
    bool IsEmpty() const { return m_at == m_end; }
    template <class Number>
    Number Take() {
        Number number{};
        const auto size = std::min(sizeof number, static_cast<std::size_t>(m_end - m_at));
        std::memcpy(&number, m_at, size);
        m_at += size;
        return number;
    }
    /// Of up to \a length units, half characters among them.
    QString Text(int length) {
        QString text;
        while (text.size() < length && !IsEmpty())
            text += QChar(Take<ushort>());
        return text;
    }
    QString Ascii(int length) {
        QString text;
        while (text.size() < length && !IsEmpty())
            text += QChar(static_cast<ushort>(Take<quint8>() & 0x7fU));
        return text;
    }

  private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};

void Write(const QString& text, vt::CborOutput& ours, QCborStreamWriter& theirs) {
    ours.Text(text);
    theirs.append(text);
}

/// One element by both writers.
void WriteNext(Source& source, vt::CborOutput& ours, QCborStreamWriter& theirs) {
    switch (source.Take<quint8>() % 8) {
        case 0: {
            const auto number = source.Take<quint64>() >> source.Take<quint8>() % 64;
            ours.Unsigned(number);
            theirs.append(number);
            break;
        }
        case 1: {
            const auto number = source.Take<qint64>() >> source.Take<quint8>() % 64;
            ours.Integer(number);
            theirs.append(number);
            break;
        }
        case 2: {
            const auto number = source.Take<double>();
            ours.Double(number);
            theirs.append(number);
            break;
        }
        case 3: {
            const bool flag = source.Take<quint8>() % 2 == 0;
            ours.Boolean(flag);
            theirs.append(flag);
            break;
        }
        case 4:
            ours.Null();
            theirs.append(nullptr);
            break;
        case 5:
            Write(source.Text(source.Take<quint8>()), ours, theirs);
            break;
        case 6:
            Write(source.Ascii(source.Take<quint8>()).repeated(source.Take<quint8>() % 4), ours, theirs);
            break;
        default:
            ours.OpenArray();
            theirs.startArray();
            ours.CloseArray();
            theirs.endArray();
            break;
    }
}

}  // namespace

/// The bytes are elements to be written. What messages are written with writes what Qt's writer does.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    vt::CborOutput ours;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QCborStreamWriter theirs(&buffer);
    while (!source.IsEmpty()) {
        const qint64 before = buffer.pos();
        WriteNext(source, ours, theirs);
        const QByteArray element(ours.Data() + before, ours.Size() - static_cast<int>(before));
        Check(element == buffer.data().mid(static_cast<int>(before)), "both write the same",
              QString::fromLatin1(element.toHex(' ')));
    }
    return 0;
}
