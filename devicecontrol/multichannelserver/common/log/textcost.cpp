// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/textcost.h>

#include <QtCore/QChar>

namespace {

constexpr qint64 Control = 600;
constexpr qint64 FormatControl = 1100;  // most change the direction
constexpr qint64 Tab = 1200;
constexpr qint64 Line = 7500;
constexpr qint64 EmptyLine = 900;
constexpr qint64 Paragraph = 2000;
constexpr qint64 Mark = 400;
constexpr qint64 MarkUponMarks = 5;  // each is compared with those before it,
constexpr int MaxMarks = 4096;       // within what is shaped at once

/// Of a script.
struct Cost {
    qint64 letter;
    qint64 beginning;  ///< of letters of this script after others
};
constexpr Cost Simple = {150, 1100};
constexpr Cost Shaped = {700, 1100};     // composed, joined, or thousands of them
constexpr Cost Unspaced = {3600, 1100};  // words are told apart by a dictionary
constexpr Cost Rare = {700, 5000};       // looked for in one font after the other

Cost CostOf(QChar::Script script) {
    switch (script) {
        case QChar::Script_Common:
        case QChar::Script_Inherited:
        case QChar::Script_Latin:
        case QChar::Script_Greek:
        case QChar::Script_Cyrillic:
            return Simple;
        case QChar::Script_Arabic:
        case QChar::Script_Devanagari:
        case QChar::Script_Han:
        case QChar::Script_Hangul:
        case QChar::Script_Hebrew:
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
            return Shaped;
        case QChar::Script_Khmer:
        case QChar::Script_Lao:
        case QChar::Script_Myanmar:
        case QChar::Script_Thai:
            return Unspaced;
        default:
            return Rare;
    }
}

/// Adds up a text, character by character.
class Meter {
  public:
    qint64 CostOfNext(uint character);

  private:
    qint64 CostOfLetter(uint character);
    qint64 CostOfMark();
    qint64 CostOfControl(uint character);
    qint64 CostOfLine();

    QChar::Script m_script = QChar::Script_Latin;
    int m_marks = 0;  ///< upon the last letter
    bool m_hasLetter = false;
    bool m_isLineEmpty = true;
};

qint64 Meter::CostOfNext(uint character) {
    if (character >= 0x20 && character < 0x7f) return CostOfLetter(character);
    switch (QChar::category(character)) {
        case QChar::Mark_Enclosing:
        case QChar::Mark_NonSpacing:
        case QChar::Mark_SpacingCombining:
            return CostOfMark();
        case QChar::Other_Control:
            return CostOfControl(character);
        case QChar::Other_Format:
            return FormatControl;
        case QChar::Separator_Line:
            return CostOfLine();
        case QChar::Separator_Paragraph:
            return Paragraph;
        default:
            return CostOfLetter(character);
    }
}

qint64 Meter::CostOfLetter(uint character) {
    m_marks = 0;
    m_hasLetter = true;
    m_isLineEmpty = false;
    const QChar::Script script = QChar::script(character);
    const Cost cost = CostOf(script);
    // Digits, blanks and the like go with the letters before them.
    if (script == m_script || script == QChar::Script_Common || script == QChar::Script_Inherited)
        return cost.letter;
    m_script = script;
    return cost.letter + cost.beginning;
}

qint64 Meter::CostOfMark() {
    if (m_hasLetter && m_marks < MaxMarks) ++m_marks;
    return Mark + MarkUponMarks * m_marks;
}

qint64 Meter::CostOfControl(uint character) {
    if (character == '\n' || character == '\r') {
        m_hasLetter = false;
        return Paragraph;
    }
    return character == '\t' ? Tab : Control;
}

qint64 Meter::CostOfLine() {
    const bool wasEmpty = m_isLineEmpty;
    m_isLineEmpty = true;
    m_hasLetter = false;
    return wasEmpty ? EmptyLine : Line;
}

/// The character of \a text that begins at \a at.
uint CharacterAt(const QString& text, int at) {
    const QChar first = text.at(at);
    const bool isPair = first.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(first, text.at(at + 1)) : first.unicode();
}

/// In UTF-8.
int CountBytes(uint character) {
    if (character < 0x80) return 1;
    if (character < 0x800) return 2;
    return character < 0x10000 ? 3 : 4;
}

}  // namespace

qint64 textcost::Of(const QString& text) {
    Meter meter;
    qint64 cost = 0;
    for (int at = 0; at < text.size();) {
        const uint character = CharacterAt(text, at);
        cost += meter.CostOfNext(character);
        at += QChar::requiresSurrogates(character) ? 2 : 1;
    }
    return cost;
}

int textcost::CountRuns(const QString& text) {
    QChar::Script script = QChar::Script_Common;
    int runs = 1;
    for (int at = 0; at < text.size();) {
        const uint character = CharacterAt(text, at);
        at += QChar::requiresSurrogates(character) ? 2 : 1;
        const QChar::Script own = QChar::script(character);
        const bool isLetter = own != QChar::Script_Common && own != QChar::Script_Inherited;
        if (character < 0x20 || character == QChar::ObjectReplacementCharacter ||
            QChar::category(character) == QChar::Other_Format || (isLetter && own != script))
            ++runs;
        if (isLetter) script = own;
    }
    return runs;
}

int textcost::LengthWithin(const QString& text, qint64 budget, int leastBytes) {
    Meter meter;
    qint64 cost = 0;
    int bytes = 0;
    int at = 0;
    while (at < text.size()) {
        const uint character = CharacterAt(text, at);
        const int next = at + (QChar::requiresSurrogates(character) ? 2 : 1);
        cost += meter.CostOfNext(character);
        bytes += CountBytes(character);
        if (cost > budget && bytes > leastBytes) break;
        at = next;
    }
    return at;
}
