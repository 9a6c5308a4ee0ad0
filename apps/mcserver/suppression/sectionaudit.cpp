// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/sectionaudit.h>

#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/mpxorv/mpxorvrequests.h>

#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/config/icfg.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int MaxRead = 65536;  // modules

const QString* FindKey(const std::map<QString, QString>& keys, const QString& key) {
    const auto found = keys.find(key);
    return found != keys.end() ? &found->second : nullptr;
}

/// As it is read: what is missing or no number is \a fallback.
int NumberOf(const QString* content, int fallback) {
    bool isNumber = false;
    const int number = content != nullptr ? content->trimmed().toInt(&isNumber) : 0;
    return isNumber ? number : fallback;
}

/// The number in "Module7" or "DI_7"; -1 in anything else.
int NumberIn(const QString& name, QLatin1String pattern) {
    const int at = QString(pattern).indexOf(QLatin1Char('%'));
    bool isNumber = false;
    const int number = name.mid(at).toInt(&isNumber);
    return isNumber && name == QString(pattern).arg(number) ? number : -1;
}

CodedText Quoted(const QString* content) {
    if (content == nullptr) return ECode::IsMissing;
    return QStringLiteral("'%1'").arg(peertext::Shown(*content));
}

CodedText Listed(const QStringList& names) {
    const CodedText text = QStringList(names.mid(0, SectionAudit::MaxNamed)).join(QStringLiteral(", "));
    if (names.size() <= SectionAudit::MaxNamed) return text;
    return {ECode::AndMore, {text, CodedText::Number(names.size() - SectionAudit::MaxNamed)}};
}

/// The key for which an entry is left out; empty: it is used.
QString Obstacle(const std::map<QString, QString>& keys) {
    const auto isEmpty = [&keys](QLatin1String key) {
        const QString* const content = FindKey(keys, key);
        return content == nullptr || content->isEmpty();
    };
    if (NumberOf(FindKey(keys, gtskeys::Index), -1) < 0) return gtskeys::Index;
    if (isEmpty(gtskeys::Name)) return gtskeys::Name;
    if (isEmpty(gtskeys::Address)) return gtskeys::Address;
    return NumberOf(FindKey(keys, gtskeys::PollInterval), 0) > 0 ? QString() : gtskeys::PollInterval;
}

bool IsKnown(const QString& key) {
    for (const QLatin1String known :
         {gtskeys::Index, gtskeys::Name, gtskeys::Address, gtskeys::PollInterval, gtskeys::Label})
        if (key == known) return true;
    const QString section = key.section(QLatin1Char('/'), 0, 0);
    const QString name = key.section(QLatin1Char('/'), 1);
    if (section == gtskeys::Assignments && name == gtskeys::AssignmentCount) return true;
    return (section == gtskeys::Assignments || section == gtskeys::Labels) &&
           NumberIn(name, gtskeys::Input) >= 0;
}

/// Whether \a content is meant to be a frequency.
bool IsMeant(const QString& content) {
    bool isNumber = false;
    const double hz = content.toDouble(&isNumber);
    return !content.trimmed().isEmpty() && !(isNumber && hz == 0.0);
}

}  // namespace

SectionAudit::SectionAudit(ICfg& section, const std::vector<ModuleSettings>& taken) {
    for (const QString& key : section.GetKeys())
        Sort(key, section.ReadString(key, QString()));
    LookAtModules(taken);
    LookAtRest();
    Shorten();
}

void SectionAudit::Sort(const QString& key, const QString& content) {
    const QString first = key.section(QLatin1Char('/'), 0, 0);
    const QString rest = key.section(QLatin1Char('/'), 1);
    const int module = rest.isEmpty() ? -1 : NumberIn(first, gtskeys::Module);
    if (module >= 0) m_modules[module][rest] = content;
    if (module >= 0 && IsKnown(rest)) return;
    if (key == gtskeys::ModuleCount)
        m_top[key] = content;
    else if (first == gtskeys::NotLoaded)
        m_kept << rest.section(QLatin1Char('/'), 0, 0);
    else
        m_unknown << peertext::Shown(key);
}

void SectionAudit::LookAtModules(const std::vector<ModuleSettings>& taken) {
    const int count = std::min(NumberOf(FindKey(m_top, gtskeys::ModuleCount), 0), MaxRead);
    LookAtCount(count);
    auto settings = taken.begin();
    for (const auto& [number, keys] : m_modules) {
        if (number >= count) break;
        const QString name = QString(gtskeys::Module).arg(number);
        const QString obstacle = Obstacle(keys);
        if (!obstacle.isEmpty())
            Tell({ECode::SectionModuleUnusable, {name, obstacle, Quoted(FindKey(keys, obstacle))}});
        else if (settings != taken.end())
            LookAtAssignments(name, keys, *settings++);
    }
}

void SectionAudit::LookAtCount(int count) {
    QStringList beyond;
    int counted = 0;
    for (const auto& module : m_modules)
        if (module.first < count)
            ++counted;
        else
            beyond << QString(gtskeys::Module).arg(module.first);
    const QString* const content = FindKey(m_top, gtskeys::ModuleCount);
    bool isNumber = true;
    if (content != nullptr) content->trimmed().toInt(&isNumber);
    if (!beyond.isEmpty())
        Tell({ECode::SectionModulesUncounted, {Quoted(content), Listed(beyond)}});
    else if (!isNumber)
        Tell({ECode::SectionCountUnusable, {Quoted(content)}});
    QStringList missing;
    for (int number = 0; number < count && counted + missing.size() < count; ++number)
        if (m_modules.count(number) == 0) missing << QString(gtskeys::Module).arg(number);
    if (!missing.isEmpty()) Tell({ECode::SectionModulesMissing, {Quoted(content), Listed(missing)}});
}

void SectionAudit::LookAtAssignments(const QString& name, const Keys& keys, const ModuleSettings& taken) {
    const QString below = gtskeys::Assignments + QLatin1Char('/');
    const QString* const content = FindKey(keys, below + gtskeys::AssignmentCount);
    const int inputs = static_cast<int>(taken.frequencies.size());
    const int count = NumberOf(content, 0);
    QStringList beyond;
    for (const auto& [key, frequency] : keys) {
        const int input = key.startsWith(below) ? NumberIn(key.mid(below.size()), gtskeys::Input) : -1;
        if (input < 0 || !IsMeant(frequency)) continue;
        // A module that had more inputs once leaves theirs behind, with the count of those that it has now.
        if (input < std::min(count, inputs))
            LookAtFrequency(name + QLatin1Char('/') + key, frequency,
                            taken.frequencies[static_cast<std::size_t>(input)]);
        else if (input < inputs || count != inputs)
            beyond << QString(gtskeys::Input).arg(input);
    }
    if (taken.index != NumberOf(FindKey(keys, gtskeys::Index), -1))
        Tell({ECode::SectionIndexTwice,
              {name, *FindKey(keys, gtskeys::Index), CodedText::Number(taken.index)}});
    if (beyond.isEmpty()) return;
    m_isToBeWrittenOver = true;
    Tell({ECode::SectionInputsUncounted, {name, Quoted(content), CodedText::Number(inputs), Listed(beyond)}});
}

void SectionAudit::LookAtFrequency(const QString& key, const QString& content, double used) {
    constexpr FrequencyRange range{MpxOrvRequests::MinFrequency, MpxOrvRequests::MaxFrequency};
    constexpr int Digits = 15;
    const QString hertz = QString::number(used, 'g', Digits);
    const bool isNone = !std::isfinite(used) || used <= 0.0;
    const bool isWhole = !isNone && used == std::floor(used);
    if (isWhole && range.Excludes(used)) Tell({ECode::SectionFrequencyOutside, {key, hertz}});
    if (isWhole) return;
    m_isToBeWrittenOver = true;
    const CodedText taken = isNone ? CodedText(ECode::Nothing) : CodedText(hertz + QStringLiteral(" Hz"));
    Tell({ECode::SectionFrequencyUnusable, {key, Quoted(&content), taken}});
}

void SectionAudit::LookAtRest() {
    m_kept.removeDuplicates();
    if (!m_kept.isEmpty()) Tell({ECode::SectionPutAside, {Listed(m_kept)}});
    if (!m_unknown.isEmpty()) Tell({ECode::SectionKeysUnknown, {Listed(m_unknown)}});
}

void SectionAudit::Tell(CodedText fault) {
    m_faults.push_back(std::move(fault));
}

void SectionAudit::Shorten() {
    std::stable_sort(m_faults.begin(), m_faults.end(), [](const CodedText& a, const CodedText& b) {
        return eventcodes::Of(a.GetCode()).severity > eventcodes::Of(b.GetCode()).severity;
    });
    if (m_faults.size() <= MaxFaults) return;
    const auto more = static_cast<qint64>(m_faults.size() - MaxFaults);
    m_faults.resize(MaxFaults);
    m_faults.emplace_back(ECode::SectionMoreFaults,
                          std::initializer_list<CodedText>{CodedText::Number(more)});
}
