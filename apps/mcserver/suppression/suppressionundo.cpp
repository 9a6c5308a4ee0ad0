// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionundo.h>

#include <apps/common/frequencytext.h>
#include <apps/mcserver/suppression/inputundo.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QPointer>
#include <QtCore/QStringList>

#include <cmath>
#include <utility>

namespace {

constexpr int MostLost = 5;          // a bar is one line or two
constexpr int MaxModuleLength = 60;  // characters of its name, and of its address

QString UndoNameOf(const ModuleSettings& settings) {
    return SuppressionUndo::tr("%1 at %2", "A data module")
        .arg(valuetext::Shortened(settings.GetName(), MaxModuleLength),
             valuetext::Shortened(settings.address, MaxModuleLength));
}

}  // namespace

SuppressionUndo::SuppressionUndo(GTSDisplay& display, const FrequencyRange& range)
    : m_display(display), m_range(range), m_modules(Read()) {
    m_look.setSingleShot(true);
    const auto lookSoon = [this] {
        if (!m_look.isActive()) m_look.start(0);
    };
    connect(&m_look, &QTimer::timeout, this, &SuppressionUndo::Look);
    connect(&display.GetPlant(), &SuppressionPlant::SignalStatesChanged, this, lookSoon);
}

SuppressionUndo::Modules SuppressionUndo::Read() const {
    Modules modules;
    m_display.GetPlant().ForEachModule([&modules](const ModuleView& view) {
        const ModuleIdentity& identity = view.identity;
        modules[view.number] = {{identity.index, identity.type, identity.address, view.pollInterval,
                                 view.frequencies, view.labels, identity.label},
                                identity.NodeName(),
                                view.isSwitchedOff};
    });
    return modules;
}

void SuppressionUndo::TakeAsKnown() {
    for (const auto& [number, now] : Read()) {
        const auto known = m_modules.find(number);
        if (known != m_modules.end()) known->second.settings = now.settings;
    }
}

void SuppressionUndo::Look() {
    const Modules before = std::exchange(m_modules, Read());
    std::vector<ModuleSettings> changed;
    std::vector<ModuleSettings> changedTo;
    for (const auto& [number, known] : before) {
        const auto now = m_modules.find(number);
        if (now == m_modules.end()) {
            OfferToAdd(known.settings);
            continue;
        }
        // One that was just added is not connected yet, and one that is lost is no operator's doing.
        if (!known.isSwitchedOff && now->second.isSwitchedOff) OfferToConnect(now->second);
        const ModuleSettings& settings = now->second.settings;
        // One of another type has other inputs: there is nothing of the old ones to be had back.
        if (known.settings.type != settings.type) continue;
        if (inputundo::CountCells({known.settings}, {settings}) == 0) continue;
        changed.push_back(known.settings);
        changedTo.push_back(settings);
    }
    if (!changed.empty()) OfferToRestore(changed, changedTo);
}

bool SuppressionUndo::IsWatched(double hz) const {
    bool isWatched = false;
    m_display.GetPlant().ForEachModule([&](const ModuleView& view) {
        for (const double other : view.frequencies)
            isWatched |= view.state == EModuleState::Connected && std::floor(other) == std::floor(hz);
    });
    return isWatched;
}

/// What never could be tuned to was never supervised.
bool SuppressionUndo::CanBeTunedTo(double hz) const {
    return hz > 0.0 && !m_range.Excludes(hz);
}

/// What is not supervised any more; empty if nothing was.
QString SuppressionUndo::LossOf(const std::vector<double>& frequencies) const {
    QStringList texts;
    for (const double hz : frequencies)
        if (CanBeTunedTo(hz) && !IsWatched(hz)) texts += FrequencyText::InMegahertz(hz);
    if (texts.isEmpty()) return QString();
    const int more = texts.size() - MostLost;
    if (more > 0) texts = texts.mid(0, MostLost) + QStringList(tr("%1 more").arg(more));
    return QLatin1Char(' ') + tr("Not supervised any more (MHz): %1.").arg(texts.join(QStringLiteral("; ")));
}

void SuppressionUndo::OfferToAdd(const ModuleSettings& deleted) {
    const QString what = tr("The data module %1 is deleted.").arg(UndoNameOf(deleted));
    Q_EMIT Acted(what + LossOf(deleted.frequencies), [display = QPointer<GTSDisplay>(&m_display), deleted] {
        if (display != nullptr) display->AddModule(deleted);
    });
}

void SuppressionUndo::OfferToConnect(const Known& module) {
    const QString what = tr("The data module %1 is disconnected.").arg(UndoNameOf(module.settings));
    Q_EMIT Acted(what + LossOf(module.settings.frequencies),
                 [display = QPointer<GTSDisplay>(&m_display), node = module.node] {
                     if (display != nullptr) display->GetPlant().ConnectModule(node);
                 });
}

void SuppressionUndo::OfferToRestore(const std::vector<ModuleSettings>& before,
                                     const std::vector<ModuleSettings>& after) {
    const QString what = tr("The data module %1 is changed.").arg(UndoNameOf(after.front()));
    std::vector<double> lost;
    const std::vector<ModuleSettings> all = m_display.GetPlant().GetSettings();
    for (const double hz : inputundo::FindCleared(before, all))
        if (CanBeTunedTo(hz)) lost.push_back(hz);
    const auto undo = [self = QPointer<SuppressionUndo>(this), before, after] {
        if (self == nullptr) return;
        inputundo::TakeBack(self->m_display.GetPlant(), before, after);
        self->TakeAsKnown();
    };
    Q_EMIT Acted(what + LossOf(lost), undo);
}
