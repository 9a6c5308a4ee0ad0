// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/iniwriter.h>

#include <QtCore/QString>

namespace {

const char HexDigits[] = "0123456789abcdef";

bool IsHexDigit(ushort code) {
    return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'f') || (code >= 'A' && code <= 'F');
}

bool IsPlainInName(ushort code) {
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           code == '_' || code == '-' || code == '.';
}

void AppendHex(QByteArray* text, ushort code, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text->append(HexDigits[(code >> shift) & 0xF]);
}

/// Without anything that means something in a line, so that names need no quotes.
void AppendName(QByteArray* text, const QStringRef& name) {
    for (const QChar character : name) {
        const ushort code = character.unicode();
        if (IsPlainInName(code)) {
            text->append(static_cast<char>(code));
        } else if (code == '/') {
            text->append('\\');
        } else {
            QByteArray hex;
            AppendHex(&hex, code, code <= 0xFF ? 2 : 4);
            text->append(code <= 0xFF ? "%" : "%U").append(hex.toUpper());
        }
    }
}

/// The character of a short escape; 0 where there is none.
char ShortEscape(ushort code) {
    switch (code) {
        case '\0':
            return '0';
        case '\a':
            return 'a';
        case '\b':
            return 'b';
        case '\f':
            return 'f';
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        case '\v':
            return 'v';
        case '"':
        case '\\':
            return static_cast<char>(code);
        default:
            return 0;
    }
}

void AppendHexEscape(QByteArray* text, ushort code) {
    int digits = 1;
    while (digits < 4 && (code >> (4 * digits)) != 0)
        ++digits;
    text->append("\\x");
    AppendHex(text, code, digits);
}

void AppendContent(QByteArray* text, const QString& content) {
    QByteArray escaped;
    escaped.reserve(content.size() + 2);
    bool needsQuotes = content.startsWith(QLatin1Char(' ')) || content.endsWith(QLatin1Char(' '));
    bool wouldReadOn = false;  // a digit that follows would belong to the escape before it
    for (const QChar character : content) {
        const ushort code = character.unicode();
        const bool isPrintable = code >= ' ' && code < 0x7F;
        if (const char escape = ShortEscape(code)) {
            escaped.append('\\').append(escape);
            wouldReadOn = code == 0;
        } else if (!isPrintable || (wouldReadOn && IsHexDigit(code))) {
            AppendHexEscape(&escaped, code);
            wouldReadOn = true;
        } else {
            needsQuotes = needsQuotes || code == ';' || code == ',' || code == '=';
            escaped.append(static_cast<char>(code));
            wouldReadOn = false;
        }
    }
    if (needsQuotes) text->append('"');
    // A first "@" once marked what is no text, and is doubled where it is meant.
    if (content.startsWith(QLatin1Char('@'))) text->append('@');
    text->append(escaped);
    if (needsQuotes) text->append('"');
}

void AppendSection(QByteArray* text, const QStringRef& section) {
    if (!text->isEmpty()) text->append('\n');
    text->append('[');
    // "General" is the section of the keys without one.
    if (section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0) text->append('%');
    AppendName(text, section);
    text->append("]\n");
}

void AppendLine(QByteArray* text, const QStringRef& name, const QString& content) {
    AppendName(text, name);
    text->append('=');
    AppendContent(text, content);
    text->append('\n');
}

}  // namespace

QByteArray IniWriter::Write(const CfgContents& contents) {
    QByteArray text;
    for (const auto& [key, content] : contents) {
        if (key.contains(QLatin1Char('/'))) continue;
        if (text.isEmpty()) text.append("[General]\n");
        AppendLine(&text, QStringRef(&key), content);
    }
    QStringRef section;
    for (const auto& [key, content] : contents) {
        const int slash = key.indexOf(QLatin1Char('/'));
        if (slash == -1) continue;
        const QStringRef own = key.leftRef(slash);
        if (section != own) AppendSection(&text, own);
        section = own;
        AppendLine(&text, key.midRef(slash + 1), content);
    }
    return text;
}
