// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/cboroutput.h>

namespace vt {

namespace {

/// A longer text is worth an array of its own on the way.
constexpr int LongestAtOnce = 256;
constexpr ushort LastAscii = 0x7f;

}  // namespace

void CborOutput::Text(const QString& text) {
    if (text.size() <= LongestAtOnce && WriteIfAscii(text)) return;
    const QByteArray bytes = text.toUtf8();
    WriteHead(CborHead::Text, static_cast<quint64>(bytes.size()));
    m_bytes.Append(bytes.constData(), bytes.size());
}

bool CborOutput::WriteIfAscii(const QString& text) {
    const int before = m_bytes.Size();
    const int size = text.size();
    WriteHead(CborHead::Text, static_cast<quint64>(size));
    char* const bytes = m_bytes.Reserve(size);
    const QChar* const characters = text.constData();
    ushort all = 0;
    for (int i = 0; i < size; ++i) {
        const ushort unit = characters[i].unicode();
        all = static_cast<ushort>(all | unit);
        bytes[i] = static_cast<char>(unit);
    }
    if (all > LastAscii) {
        m_bytes.Truncate(before);
        return false;
    }
    m_bytes.Wrote(size);
    return true;
}

}  // namespace vt
