// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/modulechanges.h>

#include <apps/common/systemuser.h>
#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/gts/moduleview.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

QString MegahertzText(double hz) {
    constexpr double HzPerMegahertz = 1000000.0;
    constexpr int Digits = 10;
    return hz > 0.0 ? QStringLiteral("%1 MHz").arg(QString::number(hz / HzPerMegahertz, 'g', Digits))
                    : QString();
}

/// What people typed, bounded; a word for nothing.
CodedText TypedText(const QString& text) {
    return text.isEmpty() ? CodedText(ECode::Nothing) : CodedText(peertext::Shown(text));
}

/// What goes with a module; nothing if that is none.
CodedText FrequenciesOf(const ModuleSettings& module) {
    constexpr int MaxNamed = 16;
    QStringList texts;
    for (const double hz : module.frequencies)
        if (hz > 0.0) texts << MegahertzText(hz);
    if (texts.isEmpty()) return {};
    const CodedText named = QStringList(texts.mid(0, MaxNamed)).join(QStringLiteral(", "));
    const int more = texts.size() - MaxNamed;
    return {ECode::ItsFrequencies,
            {more > 0 ? CodedText(ECode::AndMore, {named, CodedText::Number(more)}) : named}};
}

CodedText MillisecondsText(PollInterval interval) {
    return QStringLiteral("%1 ms").arg(interval.count());
}

}  // namespace

ModuleChanges::ModuleChanges(SuppressionPlant& plant, ServerLog& log, IClock& clock)
    : m_plant(plant), m_log(log), m_look(clock), m_modules(Read()) {
    connect(&m_plant, &SuppressionPlant::SignalSettingsChanged, this, &ModuleChanges::LookSoon);
    connect(&m_plant, &SuppressionPlant::SignalStatesChanged, this, &ModuleChanges::OnStates);
}

ModuleChanges::Modules ModuleChanges::Read() const {
    Modules modules;
    m_plant.ForEachModule([&modules](const ModuleView& view) {
        const ModuleIdentity& identity = view.identity;
        modules[view.number] = {{identity.index, identity.type, identity.address, view.pollInterval,
                                 view.frequencies, view.labels, identity.label},
                                view.state,
                                view.isSwitchedOff};
    });
    return modules;
}

// With every input that changes: nothing is copied then.
void ModuleChanges::OnStates() {
    bool hasChanged = m_plant.Count() != static_cast<int>(m_modules.size());
    m_plant.ForEachModule([this, &hasChanged](const ModuleView& view) {
        const auto known = m_modules.find(view.number);
        hasChanged = hasChanged || known == m_modules.end() || known->second.state != view.state ||
                     known->second.isSwitchedOff != view.isSwitchedOff;
    });
    if (hasChanged) LookSoon();
}

// An operation sets several things in a row, and only what they are at last is told. Whoever writes by the
// network is known only while that is written; nobody else but who sits at the server's window changes
// modules.
void ModuleChanges::LookSoon() {
    if (m_look.IsRunning()) return;
    m_who = m_log.GetActorText();
    m_look.Start(std::chrono::milliseconds::zero(), [this] { Look(); });
}

void ModuleChanges::Look() {
    const Modules before = std::exchange(m_modules, Read());
    for (const auto& [number, known] : before)
        if (m_modules.count(number) == 0) Tell(ECode::ModuleDeleted, known.settings);
    for (const auto& [number, known] : m_modules) {
        const auto found = before.find(number);
        if (found == before.end()) {
            Tell(ECode::ModuleAdded, known.settings);
            continue;
        }
        TellSettings(found->second.settings, known.settings);
        TellState(number, found->second, known);
    }
    TellCoverage(before);
}

std::set<double> ModuleChanges::CoveredBy(const Modules& modules) {
    std::set<double> hertz;
    for (const auto& [number, known] : modules)
        for (const double frequency : known.settings.frequencies)
            if (frequency > 0.0) hertz.insert(std::floor(frequency));
    return hertz;
}

void ModuleChanges::TellCoverage(const Modules& before) const {
    const std::set<double> old = CoveredBy(before);
    const std::set<double> now = CoveredBy(m_modules);
    Coverage coverage{{}, {}, Who()};
    std::set_difference(old.begin(), old.end(), now.begin(), now.end(),
                        std::inserter(coverage.lost, coverage.lost.end()));
    std::set_difference(now.begin(), now.end(), old.begin(), old.end(),
                        std::inserter(coverage.gained, coverage.gained.end()));
    if (!coverage.lost.empty() || !coverage.gained.empty()) m_onCovered(coverage);
}

/// A module in error stays so until somebody connects it anew.
void ModuleChanges::TellState(int number, const Known& before, const Known& now) {
    const bool wasLost = before.state == EModuleState::Error && now.state != EModuleState::Error;
    const auto asked = m_reconnecting.find(number);
    const CodedText who = wasLost && asked != m_reconnecting.end() ? asked->second : Who();
    if (now.state != EModuleState::Error) m_reconnecting.erase(number);
    if (!before.isSwitchedOff && now.isSwitchedOff)
        Tell(ECode::ModuleDisconnected, now.settings);
    else if (!now.isSwitchedOff && (before.isSwitchedOff || wasLost))
        Tell(ECode::ModuleReconnected, now.settings, who);
}

void ModuleChanges::NoteReconnect() {
    m_reconnecting.clear();
    const CodedText who = m_log.GetActorText();
    if (who.IsEmpty()) return;
    m_plant.ForEachModule([&](const ModuleView& module) {
        if (module.state == EModuleState::Error) m_reconnecting[module.number] = who;
    });
}

void ModuleChanges::TellSettings(const ModuleSettings& before, const ModuleSettings& now) {
    if (before == now) return;
    const auto tell = [&](ECode what, const CodedText& from, const CodedText& to) {
        if (from != to) TellChange(now, what, from, to);
    };
    // By the name of before, which nobody could find any more.
    if (before.label != now.label)
        TellChange(before, ECode::ModuleName, TypedText(before.label), TypedText(now.label));
    tell(ECode::ModuleType, TypedText(before.type), TypedText(now.type));
    tell(ECode::ModuleAddress, TypedText(before.address), TypedText(now.address));
    tell(ECode::ModulePollInterval, MillisecondsText(before.pollInterval),
         MillisecondsText(now.pollInterval));
    TellInputs(before, now);
}

void ModuleChanges::TellInputs(const ModuleSettings& before, const ModuleSettings& now) {
    const auto frequency = [](const ModuleSettings& module, std::size_t input) {
        return TypedText(input < module.frequencies.size() ? MegahertzText(module.frequencies[input])
                                                           : QString());
    };
    const auto label = [](const ModuleSettings& module, std::size_t input) {
        return TypedText(input < module.labels.size() ? module.labels[input] : QString());
    };
    const std::size_t count = std::max(before.frequencies.size(), now.frequencies.size());
    for (std::size_t input = 0; input < count; ++input) {
        const QString number = QString::number(input);
        if (label(before, input) != label(now, input))
            TellChange(now, {ECode::InputName, {number}}, label(before, input), label(now, input));
        if (frequency(before, input) != frequency(now, input))
            TellChange(now, {ECode::InputFrequency, {number}}, frequency(before, input),
                       frequency(now, input));
    }
}

CodedText ModuleChanges::Who() const {
    return m_who.IsEmpty() ? CodedText(ECode::AtServerWindow, {SystemUser()}) : m_who;
}

void ModuleChanges::Tell(ECode code, const ModuleSettings& module, const CodedText& who) {
    const CodedText lost = code == ECode::ModuleDeleted ? FrequenciesOf(module) : CodedText();
    m_log.Write(
        {code,
         {peertext::Shown(module.GetName()), peertext::Shown(module.address), {ECode::By, {who}}, lost}},
        {QString(), who.ToEnglish()});
}

void ModuleChanges::TellChange(const ModuleSettings& module, const CodedText& what, const CodedText& from,
                               const CodedText& to) {
    const CodedText who = Who();
    m_log.Write(
        {ECode::ModuleChanged, {peertext::Shown(module.GetName()), what, from, to, {ECode::By, {who}}}},
        {QString(), who.ToEnglish()});
}
