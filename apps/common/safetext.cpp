// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>

namespace safetext {

namespace {

bool IsHalf(const QString& text, int index) {
    const QChar c = text[index];
    if (c.isHighSurrogate()) return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    return c.isLowSurrogate() && (index == 0 || !text[index - 1].isHighSurrogate());
}

bool IsUnsafe(const QString& text, int index) {
    const ushort code = text[index].unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) ||  // control characters
           (code >= 0x2028 && code <= 0x202e) ||            // separators of lines, writing directions
           (code >= 0x2066 && code <= 0x2069) || code == 0x061c || code == 0x200e || code == 0x200f ||
           IsHalf(text, index);
}

QString Hexadecimal(QChar c, int digits) {
    return QStringLiteral("%1").arg(c.unicode(), digits, 16, QLatin1Char('0'));
}

QString InText(QChar c) {
    switch (c.unicode()) {
        case '\n':
            return QStringLiteral("\\n");
        case '\r':
            return QStringLiteral("\\r");
        case '\t':
            return QStringLiteral("\\t");
        default:
            break;
    }
    const bool isShort = c.unicode() < 0x100;
    return isShort ? QStringLiteral("\\x") + Hexadecimal(c, 2) : QStringLiteral("\\u") + Hexadecimal(c, 4);
}

QString InJson(QChar c) {
    return QStringLiteral("\\u") + Hexadecimal(c, 4);
}

QString Replaced(const QString& text, QString (*replacement)(QChar)) {
    QString result;
    int copied = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (!IsUnsafe(text, i)) continue;
        result += text.midRef(copied, i - copied);
        result += replacement(text[i]);
        copied = i + 1;
    }
    return copied == 0 ? text : result + text.midRef(copied);
}

}  // namespace

QString Escaped(const QString& text) {
    return Replaced(text, InText);
}

QString EscapedJson(const QString& json) {
    return Replaced(json, InJson);
}

}  // namespace safetext
