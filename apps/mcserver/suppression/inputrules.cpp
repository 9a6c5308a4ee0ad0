// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputrules.h>

#include <devicecontrol/multichannelserver/common/gts/moduleaddress.h>

#include <algorithm>

namespace {

constexpr int MostShownOfEntry = 40;

QString ShownEntry(const QString& text) {
    const QString line = text.simplified();
    return line.size() > MostShownOfEntry ? line.left(MostShownOfEntry) + QStringLiteral("\u2026") : line;
}

}  // namespace

QString InputRules::RefusalOfFrequency(const QString& text, FrequencyText::EPlainNumber plain,
                                       double* hz) const {
    const FrequencyText entry(text, plain);
    *hz = entry.GetHz();
    if (entry.GetProblem() == FrequencyText::EProblem::Empty) return QString();
    if (!entry.IsFrequency() || *hz == 0.0) return tr("\"%1\" is no frequency").arg(ShownEntry(text));
    if (!m_range.Excludes(*hz)) return QString();
    return tr("%1 MHz lies outside %2 to %3 MHz")
        .arg(FrequencyText::InMegahertz(*hz, 0), FrequencyText::InMegahertz(m_range.least, 0),
             FrequencyText::InMegahertz(m_range.most, 0));
}

QString InputRules::RefusalOfName(const QString& text) const {
    if (text.size() > MaxNameLength) return tr("a name has %1 characters at most").arg(MaxNameLength);
    const bool hasControl =
        std::any_of(text.begin(), text.end(), [](QChar character) { return !character.isPrint(); });
    return hasControl ? tr("a name is one line of visible characters") : QString();
}

QString InputRules::RefusalOfAddress(const QString& text) const {
    const QString fault = ModuleAddress::GetFault(text);
    return fault.isEmpty() ? QString() : tr("\"%1\" cannot be right: %2").arg(ShownEntry(text), fault);
}
