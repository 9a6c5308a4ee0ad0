// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/markupscanner.h>

namespace {

constexpr int MaxEntityLength = 9;  // from behind "&", with ";"

}  // namespace

MarkupScanner::EToken MarkupScanner::Next() {
    m_start = m_at;
    if (m_at >= m_html.size()) return EToken::End;
    if (!IsAt(QLatin1Char('<'))) {
        const int end = m_html.indexOf(QLatin1Char('<'), m_at);
        m_at = end < 0 ? m_html.size() : end;
        return EToken::Text;
    }
    ++m_at;
    SkipSpace();
    if (IsAt(QLatin1Char('!'))) {
        ReadComment();
        return EToken::Comment;
    }
    const bool isClosing = IsAt(QLatin1Char('/'));
    if (isClosing) ++m_at;
    m_name = ReadWord().toLower();
    m_attributes.clear();
    if (!isClosing && m_at < m_html.size() && m_html.at(m_at).isSpace()) ReadAttributes();
    const int end = m_at;
    SkipBehind(QLatin1Char('>'));
    m_isClosed = m_html.midRef(end, m_at - end).contains(QLatin1Char('/'));
    if (isClosing) m_name = m_name.trimmed();
    return isClosing ? EToken::ClosingTag : EToken::OpeningTag;
}

void MarkupScanner::SkipSpace() {
    while (m_at < m_html.size() && m_html.at(m_at).isSpace() && !IsAt(QChar::ParagraphSeparator))
        ++m_at;
}

void MarkupScanner::SkipBehind(QChar character) {
    const int at = m_html.indexOf(character, m_at);
    m_at = at < 0 ? m_html.size() : at + 1;
}

void MarkupScanner::ReadComment() {
    const QLatin1String end("-->");
    if (m_html.midRef(m_at, 3) != QLatin1String("!--")) return SkipBehind(QLatin1Char('>'));
    const int at = m_html.indexOf(end, m_at + 3);
    m_at = at < 0 ? m_html.size() : at + end.size();
}

void MarkupScanner::ReadAttributes() {
    while (m_at < m_html.size()) {
        SkipSpace();
        if (IsAt(QLatin1Char('>')) || IsAt(QLatin1Char('/'))) return;
        const QString name = ReadWord().toLower();
        if (name.isEmpty()) return;
        SkipSpace();
        QString value = QStringLiteral("1");
        if (IsAt(QLatin1Char('='))) {
            ++m_at;
            SkipSpace();
            value = ReadWord();
        }
        if (!value.isEmpty()) m_attributes.emplace_back(name, value);
    }
}

QString MarkupScanner::ReadWord() {
    for (const QChar quote : {QLatin1Char('"'), QLatin1Char('\'')})
        if (IsAt(quote)) return ReadQuoted(quote);
    QString word;
    while (m_at < m_html.size()) {
        const QChar character = m_html.at(m_at);
        if (character == QLatin1Char('>') || character == QLatin1Char('<') || character == QLatin1Char('=') ||
            character.isSpace() || m_html.midRef(m_at, 2) == QLatin1String("/>"))
            break;
        ++m_at;
        word += character == QLatin1Char('&') ? ReadEntity() : character;
    }
    return word;
}

QString MarkupScanner::ReadQuoted(QChar quote) {
    QString word;
    for (++m_at; m_at < m_html.size() && !IsAt(quote);) {
        const QChar character = m_html.at(m_at++);
        // Only between double quotes there are entities.
        word += character == QLatin1Char('&') && quote == QLatin1Char('"') ? ReadEntity() : character;
    }
    if (m_at < m_html.size()) ++m_at;
    return word;
}

/// From behind "&". Those that have a name stand for none of the characters that tags are made of.
QChar MarkupScanner::ReadEntity() {
    const int length = m_html.midRef(m_at, MaxEntityLength).indexOf(QLatin1Char(';'));
    if (length < 0 || !IsAt(QLatin1Char('#'))) return QLatin1Char('&');
    const int end = m_at + length;
    const bool isHexadecimal =
        m_html.midRef(m_at + 1, 1).compare(QLatin1String("x"), Qt::CaseInsensitive) == 0;
    const int digits = m_at + (isHexadecimal ? 2 : 1);
    bool isNumber = false;
    const uint code = m_html.midRef(digits, end - digits).toUInt(&isNumber, isHexadecimal ? 16 : 10);
    if (!isNumber) return QLatin1Char('&');
    m_at = end + 1;
    return QChar(QChar::requiresSurrogates(code) ? uint(QChar::ReplacementCharacter) : code);
}
