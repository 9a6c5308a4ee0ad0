// SPDX-License-Identifier: Apache-2.0
#include <apps/common/frequencytext.h>

#include <apps/common/unit.h>

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace {

constexpr int LongestFrequency = 100;  // characters; each digit of the greatest one that there is takes fewer

/// A decimal number, its digits grouped by three or not at all: whoever types "12 15" may have left out a
/// digit.
const QRegularExpression& NumberPattern() {
    static const QString whole = QStringLiteral("(?:\\d*|\\d{1,3}(?:B\\d{3})+)");
    static const QString fraction = QStringLiteral("(?:[.,](?:\\d*|\\d{3}(?:B\\d{3})*B\\d{1,3}))?");
    static const QString exponent = QStringLiteral("(?:[eE][+-]?\\d{1,4})?");
    static const QString blank = QStringLiteral("[ \\x{a0}\\x{2007}\\x{2009}\\x{202f}]");
    static const auto& pattern = *new QRegularExpression(
        QString(QStringLiteral("^[+-]?(?=[.,]?\\d)") + whole + fraction + exponent + QLatin1Char('$'))
            .replace(QLatin1Char('B'), blank));
    return pattern;
}

/// \a text as the toolkit reads numbers.
QString Plain(const QString& text) {
    QString plain;
    for (const QChar letter : text)
        if (!letter.isSpace()) plain += letter == QLatin1Char(',') ? QLatin1Char('.') : letter;
    return plain;
}

}  // namespace

FrequencyText::FrequencyText(const QString& text, EPlainNumber plain) {
    const QString typed = text.trimmed();
    if (typed.isEmpty() || typed.size() > LongestFrequency) {
        m_problem = typed.isEmpty() ? EProblem::Empty : EProblem::NoFrequency;
        return;
    }
    const Unit hertz = Unit::Hertz();
    const QString number = hertz.WithoutUnit(typed);
    ReadNumber(number);
    const bool isPlain = number == typed;
    const bool isInMegahertz = plain == EPlainNumber::Megahertz ||
                               (plain == EPlainNumber::MegahertzOrHertz && m_hz <= MostPlainMegahertz);
    if (IsFrequency() && isPlain && isInMegahertz)
        ReadNumber(hertz.WithoutUnit(typed + QStringLiteral("MHz")));
    if (plain != EPlainNumber::Hertz) m_hz = std::round(m_hz);
}

void FrequencyText::ReadNumber(const QString& number) {
    m_hz = 0;
    m_problem = EProblem::NoFrequency;
    if (!NumberPattern().match(number).hasMatch()) return;
    bool isNumber = false;
    const double hz = Plain(number).toDouble(&isNumber);
    if (number.startsWith(QLatin1Char('-')))
        m_problem = EProblem::Negative;
    else if (std::isinf(hz))
        m_problem = EProblem::TooGreat;
    else if (isNumber)
        m_problem = EProblem::None;
    if (IsFrequency()) m_hz = hz;
}

QString FrequencyText::InMegahertz(double hz, int leastDecimals) {
    constexpr double HzPerMegahertz = 1e6;
    QString text = QString::number(hz / HzPerMegahertz, 'f', QLocale::FloatingPointShortest);
    const int point = text.indexOf(QLatin1Char('.'));
    const int decimals = point < 0 ? 0 : text.size() - point - 1;
    if (point < 0 && leastDecimals > 0) text += QLatin1Char('.');
    text += QString(qMax(0, leastDecimals - decimals), QLatin1Char('0'));
    return text.replace(QLatin1Char('.'), QLocale().decimalPoint());
}
