// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/glob.h>

#include <optional>

namespace mctree::glob {

namespace {

bool IsSpecial(QChar character) {
    return QStringLiteral("*?[\\").contains(character);
}

bool IsEscape(const QString& pattern, int at) {
    return pattern[at] == QLatin1Char('\\') && at + 1 < pattern.size() && IsSpecial(pattern[at + 1]);
}

/// Where the set of characters that begins at \a at ends, behind its "]"; none if it does not end, so that
/// the "[" is one like any other.
std::optional<int> EndOfSet(const QString& pattern, int at) {
    int first = at + 1;
    if (first < pattern.size() && pattern[first] == QLatin1Char('!')) ++first;
    // A "]" that comes first belongs to the set.
    const int end = pattern.indexOf(QLatin1Char(']'), first + 1);
    return end < 0 ? std::nullopt : std::optional(end + 1);
}

bool IsInSet(const QString& pattern, int at, int end, QChar character) {
    int i = at + 1;
    const bool isNegated = pattern[i] == QLatin1Char('!');
    if (isNegated) ++i;
    bool isIn = false;
    while (i < end - 1) {
        const bool isRange = i + 2 < end - 1 && pattern[i + 1] == QLatin1Char('-');
        const QChar last = isRange ? pattern[i + 2] : pattern[i];
        isIn = isIn || (pattern[i] <= character && character <= last);
        i += isRange ? 3 : 1;
    }
    return isIn != isNegated;
}

/// Whether the part of \a pattern at \a at, no "*", stands for \a character; \a next is where the next part
/// begins.
bool MatchesOne(const QString& pattern, int at, QChar character, int* next) {
    *next = at + 1;
    if (pattern[at] == QLatin1Char('?')) return true;
    if (pattern[at] == QLatin1Char('[')) {
        if (const auto end = EndOfSet(pattern, at)) {
            *next = *end;
            return IsInSet(pattern, at, *end, character);
        }
    }
    if (!IsEscape(pattern, at)) return pattern[at] == character;
    *next = at + 2;
    return pattern[at + 1] == character;
}

}  // namespace

bool IsGlob(const QString& text) {
    for (int i = 0; i < text.size(); ++i) {
        if (IsEscape(text, i))
            ++i;
        else if (text[i] == QLatin1Char('*') || text[i] == QLatin1Char('?') ||
                 (text[i] == QLatin1Char('[') && EndOfSet(text, i)))
            return true;
    }
    return false;
}

QString Unescaped(const QString& text) {
    QString unescaped;
    for (int i = 0; i < text.size(); ++i) {
        if (IsEscape(text, i)) ++i;
        unescaped += text[i];
    }
    return unescaped;
}

bool Matches(const QString& pattern, const QString& text) {
    int at = 0;
    int i = 0;
    // Where to go on if what follows the last "*" does not fit: the "*" takes one character more.
    int star = -1;
    int taken = 0;
    while (i < text.size()) {
        int next = at;
        if (at < pattern.size() && pattern[at] == QLatin1Char('*')) {
            star = ++at;
            taken = i;
        } else if (at < pattern.size() && MatchesOne(pattern, at, text[i], &next)) {
            at = next;
            ++i;
        } else if (star >= 0) {
            at = star;
            i = ++taken;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == QLatin1Char('*'))
        ++at;
    return at == pattern.size();
}

}  // namespace mctree::glob
