// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/linetext.h>

#include <apps/common/safetext.h>

namespace mctree::linetext {

namespace {

QString Escaped(QString text) {
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return safetext::Escaped(text);
}

/// The character that the \a digits behind \a at stand for; null if they are none.
QChar FromDigits(const QString& text, int at, int digits) {
    bool isNumber = false;
    const ushort code = text.mid(at, digits).toUShort(&isNumber, 16);
    return isNumber && at + digits <= text.size() ? QChar(code) : QChar();
}

/// Reads the escape whose "\" is at \a at, and goes on to its last character. What is none stays as it is.
QChar ReadEscape(const QString& text, int* at) {
    const QChar kind = *at + 1 < text.size() ? text[*at + 1] : QChar();
    struct Short {
        char kind, meaning;
    };
    for (const Short& known : {Short{'\\', '\\'}, Short{'n', '\n'}, Short{'t', '\t'}, Short{'r', '\r'}}) {
        if (kind != QLatin1Char(known.kind)) continue;
        ++*at;
        return QLatin1Char(known.meaning);
    }
    const int digits = kind == QLatin1Char('x') ? 2 : kind == QLatin1Char('u') ? 4 : 0;
    const QChar character = digits > 0 ? FromDigits(text, *at + 2, digits) : QChar();
    if (character.isNull()) return QLatin1Char('\\');
    *at += 1 + digits;
    return character;
}

QString Unescaped(const QString& text) {
    QString unescaped;
    for (int i = 0; i < text.size(); ++i)
        unescaped += text[i] == QLatin1Char('\\') ? ReadEscape(text, &i) : text[i];
    return unescaped;
}

Pair Wrong(const char* error) {
    return {QString(), QString(), QLatin1String(error)};
}

Pair SplitAtBlank(const QString& line) {
    const bool isQuoted = line.startsWith(QLatin1Char('"'));
    const int start = isQuoted ? 1 : 0;
    const int end = line.indexOf(isQuoted ? QLatin1Char('"') : QLatin1Char(' '), start);
    if (end < 0) return Wrong(isQuoted ? "the path lacks a \" at its end" : "a path and a value are needed");
    QString content = line.mid(end + 1).trimmed();
    if (content.startsWith(QLatin1Char('='))) content = content.mid(1).trimmed();
    return {Unescaped(line.mid(start, end - start)), Unescaped(content), QString()};
}

}  // namespace

QString Joined(const QString& path, const QString& content) {
    return Escaped(path) + QLatin1Char('\t') + Escaped(content);
}

Pair Split(const QString& line) {
    const int tab = line.indexOf(QLatin1Char('\t'));
    if (tab < 0) return SplitAtBlank(line.trimmed());
    return {Unescaped(line.left(tab)), Unescaped(line.mid(tab + 1)), QString()};
}

bool IsComment(const QString& line) {
    const QString text = line.trimmed();
    return text.isEmpty() || text.startsWith(QLatin1Char('#'));
}

}  // namespace mctree::linetext
