// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/view/frequencyentry.h>

#include <cmath>

namespace {

constexpr double HertzPerMegahertz = 1e6;
constexpr int MostShown = 24;  // characters of what somebody typed

/// In binary, 128.003 times 1e6 is less than 128003000, and would be blanked as 128002999: what is whole
/// hertz in decimal becomes whole hertz.
double ToHertz(double megahertz) {
    constexpr double Tolerance = 1e-3;
    const double hz = megahertz * HertzPerMegahertz;
    const double whole = std::nearbyint(hz);
    return std::abs(hz - whole) < Tolerance ? whole : hz;
}

/// As the table writes decimals, with as many as there are.
QString MegahertzText(double megahertz) {
    constexpr int Digits = 12;
    return QString::number(megahertz, 'g', Digits);
}

}  // namespace

FrequencyEntry::FrequencyEntry(const QString& text) : m_text(text) {
    m_text.replace(QLatin1Char(','), QLatin1Char('.'));
    m_megahertz = m_text.toDouble(&m_isNumber);
    if (m_isNumber) m_hz = ToHertz(m_megahertz);
}

bool FrequencyEntry::IsWrong() const {
    if (m_text.isEmpty()) return false;
    return !m_isNumber || !std::isfinite(m_hz) || m_hz < 0.0 || (m_hz == 0.0 && m_megahertz != 0.0);
}

QString FrequencyEntry::GetDoubt(const FrequencyRange& range) const {
    const QString trimmed = m_text.trimmed();
    const QString shown =
        trimmed.size() > MostShown ? trimmed.left(MostShown) + QStringLiteral("\u2026") : trimmed;
    if (IsWrong() && m_isNumber && m_hz < 0.0 && std::isfinite(m_hz))
        return tr("%1 MHz is less than nothing: it will never blank").arg(shown);
    if (IsWrong()) return tr("\"%1\" is no number of MHz: nothing will be assigned to the input").arg(shown);
    if (m_hz == 0.0 || !range.Excludes(m_hz)) return QString();
    return tr("%1 MHz lies outside %2 to %3 MHz: it will never blank")
               .arg(shown, MegahertzText(range.least / HertzPerMegahertz),
                    MegahertzText(range.most / HertzPerMegahertz)) +
           GetGuess(range);
}

/// Who typed hertz or kilohertz sees what it would have to be.
QString FrequencyEntry::GetGuess(const FrequencyRange& range) const {
    for (const double unit : {1e3, 1e6})
        if (!range.Excludes(m_hz / unit))
            return QLatin1Char(' ') + tr("(for %1 MHz, enter %1)").arg(MegahertzText(m_megahertz / unit));
    return QString();
}
