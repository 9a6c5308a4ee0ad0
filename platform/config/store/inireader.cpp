// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/inireader.h>

#include <QtCore/QTextCodec>

namespace {

const QByteArray ByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

bool IsBlank(QChar character) {
    return character == QLatin1Char(' ') || character == QLatin1Char('\t');
}

bool IsEndOfLine(QChar character) {
    return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

/// The value of a digit to \a base, which is 8 or 16; -1 for any other character.
int DigitOf(QChar character, int base) {
    const ushort code = character.unicode();
    int digit = -1;
    if (code >= '0' && code <= '9')
        digit = code - '0';
    else if (code >= 'a' && code <= 'f')
        digit = code - 'a' + 10;
    else if (code >= 'A' && code <= 'F')
        digit = code - 'A' + 10;
    return digit < base ? digit : -1;
}

/// What a short escape stands for; a null character where there is no such escape.
QChar ShortEscape(QChar character) {
    switch (character.unicode()) {
        case 'a':
            return QLatin1Char('\a');
        case 'b':
            return QLatin1Char('\b');
        case 'f':
            return QLatin1Char('\f');
        case 'n':
            return QLatin1Char('\n');
        case 'r':
            return QLatin1Char('\r');
        case 't':
            return QLatin1Char('\t');
        case 'v':
            return QLatin1Char('\v');
        case '"':
        case '\'':
        case '?':
        case '\\':
            return character;
        default:
            return QChar();
    }
}

/// The code that \a digits are, all of which have to be digits to base 16; -1 if they are not \a count.
int HexCode(const QStringRef& digits, int count) {
    if (digits.size() != count) return -1;
    int code = 0;
    for (const QChar character : digits) {
        const int digit = DigitOf(character, 16);
        if (digit == -1) return -1;
        code = code * 16 + digit;
    }
    return code;
}

/// Names hold "\" for "/", and "%XX" or "%UXXXX" for what means something in a line.
QString Name(const QStringRef& written) {
    QString name;
    for (int at = 0; at < written.size(); ++at) {
        const QChar character = written.at(at);
        const bool isEscape = character == QLatin1Char('%');
        const bool isLong = isEscape && at + 1 < written.size() && written.at(at + 1) == QLatin1Char('U');
        const int code = isLong     ? HexCode(written.mid(at + 2, 4), 4)
                         : isEscape ? HexCode(written.mid(at + 1, 2), 2)
                                    : -1;
        if (code != -1) {
            name += QChar(code);
            at += isLong ? 5 : 2;
        } else {
            name += character == QLatin1Char('\\') ? QLatin1Char('/') : character;
        }
    }
    return cfgcontents::Path(name);
}

/// A first "@" is doubled where it is meant; "@String(...)" held texts with null characters.
QString Meant(const QString& content) {
    if (content.startsWith(QLatin1String("@@"))) return content.mid(1);
    const QLatin1String marked("@String(");
    if (content.startsWith(marked) && content.endsWith(QLatin1Char(')')))
        return content.mid(marked.size(), content.size() - marked.size() - 1);
    return content;
}

/// One walk over a text, line by line.
class Walk {
  public:
    Walk(const QString& text, CfgContents* contents) : m_text(text), m_contents(*contents) {}

    /// False, with the reason, where it cannot go on.
    bool Run(QString* defect) {
        bool isFine = true;
        while (isFine && SkipToNextLine())
            isFine = Is('[') ? ReadSection() : ReadKey();
        *defect = m_defect;
        return isFine;
    }

  private:
    bool IsEnd() const { return m_at == m_text.size(); }
    bool Is(char character) const { return !IsEnd() && m_text.at(m_at) == QLatin1Char(character); }
    bool IsLineOver() const { return IsEnd() || IsEndOfLine(m_text.at(m_at)); }
    void SkipLine() {
        while (!IsLineOver())
            ++m_at;
    }

    /// To the first character of the next line that says something; false if there is none.
    bool SkipToNextLine() {
        while (!IsEnd()) {
            if (Is(';') || Is('#'))
                SkipLine();
            else if (IsBlank(m_text.at(m_at)) || IsLineOver())
                ++m_at;
            else
                return true;
        }
        return false;
    }

    /// The text from \a begin to here, without blanks around it.
    QStringRef Trimmed(int begin) const {
        int end = m_at;
        while (begin < end && IsBlank(m_text.at(begin)))
            ++begin;
        while (begin < end && IsBlank(m_text.at(end - 1)))
            --end;
        return m_text.midRef(begin, end - begin);
    }

    bool Refuse(int at, const QString& defect) {
        int line = 1;
        for (int i = 0; i < at; ++i)
            if (IsEndOfLine(m_text.at(i)) && m_text.midRef(i, 2) != QLatin1String("\r\n")) ++line;
        m_defect = defect.arg(line);
        return false;
    }

    bool RefuseLine(int at) { return Refuse(at, QStringLiteral("line %1 is neither a section nor a key")); }

    bool ReadSection() {
        const int begin = m_at++;
        while (!IsLineOver() && !Is(']'))
            ++m_at;
        if (!Is(']')) return RefuseLine(begin);
        const QStringRef written = Trimmed(begin + 1);
        const QLatin1String root("general");
        if (written.compare(root, Qt::CaseInsensitive) == 0)
            m_section.clear();
        else if (written.startsWith(QLatin1Char('%')) &&
                 written.mid(1).compare(root, Qt::CaseInsensitive) == 0)
            m_section = written.mid(1).toString();
        else
            m_section = Name(written);
        SkipLine();
        return true;
    }

    bool ReadKey() {
        const int begin = m_at;
        while (!IsLineOver() && !Is('=') && !Is(';'))
            ++m_at;
        if (!Is('=')) return RefuseLine(begin);
        const QString name = Name(Trimmed(begin));
        if (name.isEmpty()) return RefuseLine(begin);
        ++m_at;
        return ReadContent(m_section.isEmpty() ? name : m_section + QLatin1Char('/') + name);
    }

    bool ReadContent(const QString& key) {
        QString content;
        int kept = 0;  // so much is no blank that ends the line
        int quote = -1;
        for (; !IsEnd() && (quote != -1 || !IsLineOver()); ++m_at) {
            if (Is('"')) {
                quote = quote == -1 ? m_at : -1;
                kept = content.size();
            } else if (Is('\\')) {
                ReadEscape(&content);
                kept = content.size();
            } else if (quote != -1 || !IsBlank(m_text.at(m_at))) {
                if (quote == -1 && Is(';')) break;
                content += m_text.at(m_at);
                kept = content.size();
            } else if (kept > 0) {
                content += m_text.at(m_at);
            }
        }
        if (quote != -1) return Refuse(quote, QStringLiteral("the quote in line %1 is not closed"));
        SkipLine();
        content.truncate(kept);
        m_contents[key] = Meant(content);
        return true;
    }

    /// From the backslash to the last character that belongs to it.
    void ReadEscape(QString* content) {
        const QStringRef rest = m_text.midRef(m_at + 1);
        if (rest.isEmpty()) {
            *content += QLatin1Char('\\');
            return;
        }
        ++m_at;
        const QChar escape = ShortEscape(rest.at(0));
        if (!escape.isNull()) {
            *content += escape;
        } else if (IsEndOfLine(rest.at(0))) {
            if (rest.startsWith(QLatin1String("\r\n"))) ++m_at;  // the line goes on in the next
        } else if (rest.at(0) == QLatin1Char('x') && rest.size() > 1 && DigitOf(rest.at(1), 16) != -1) {
            ++m_at;
            *content += ReadCode(16);
        } else if (DigitOf(rest.at(0), 8) != -1) {
            *content += ReadCode(8);
        } else {
            *content += QLatin1Char('\\');  // as in a path that somebody typed
            *content += rest.at(0);
        }
    }

    /// Of all digits from here on; ends at the last.
    QChar ReadCode(int base) {
        uint code = 0;
        for (; !IsEnd() && DigitOf(m_text.at(m_at), base) != -1; ++m_at)
            code = (code * uint(base) + uint(DigitOf(m_text.at(m_at), base))) & 0xFFFF;
        --m_at;
        return QChar(code);
    }

    const QString& m_text;
    CfgContents& m_contents;
    int m_at = 0;
    QString m_section;
    QString m_defect;
};

}  // namespace

bool IniReader::Read(const QByteArray& bytes, CfgContents* contents, QString* defect) {
    contents->clear();
    if (bytes.contains('\0')) {
        *defect = QStringLiteral("it is a binary file");
        return false;
    }
    const int begin = bytes.startsWith(ByteOrderMark) ? ByteOrderMark.size() : 0;
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData() + begin, bytes.size() - begin, &state);
    if (state.invalidChars != 0 || state.remainingChars != 0) {
        *defect = QStringLiteral("it is not UTF-8 text");
        return false;
    }
    if (Walk(text, contents).Run(defect)) return true;
    contents->clear();
    return false;
}
