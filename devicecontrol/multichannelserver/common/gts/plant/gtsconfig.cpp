// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/gtsconfig.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/plant/notloaded.h>
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>

#include <platform/app/trace.h>
#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <set>
#include <utility>

namespace {

QString SectionOf(int number) {
    return QString(gtskeys::Module).arg(number);
}

constexpr int MaxLabelLength = 256;  // of what a file may say

std::vector<QString> ReadLabels(ICfg& section, std::size_t inputs) {
    std::vector<QString> labels(inputs);
    const std::unique_ptr<ICfg> stored(section.OpenSection(gtskeys::Labels));
    for (std::size_t i = 0; stored && i < inputs; ++i)
        labels[i] = stored->ReadString(QString(gtskeys::Input).arg(i), QString()).left(MaxLabelLength);
    return labels;
}

/// Nothing stands there for inputs that never had a name.
void SaveLabels(ICfg& section, const std::vector<QString>& labels) {
    std::unique_ptr<ICfg> stored(section.OpenSection(gtskeys::Labels));
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const QString key = QString(gtskeys::Input).arg(i);
        const QString before = stored ? stored->ReadString(key, QString()) : QString();
        if (labels[i] == before) continue;
        if (!stored) stored.reset(section.ProvideSection(gtskeys::Labels));
        stored->WriteString(key, labels[i]);
    }
}

/// Nothing stands there for a module that never had a name.
void SaveLabel(ICfg& section, const QString& label) {
    if (label != section.ReadString(gtskeys::Label, QString())) section.WriteString(gtskeys::Label, label);
}

bool ReadEntry(ICfg& gts, const QString& name, gtsconfig::Entry* entry) {
    const std::unique_ptr<ICfg> section(gts.OpenSection(name));
    if (!section) return false;
    ModuleSettings& settings = entry->settings;
    const int interval = section->ReadInt(gtskeys::PollInterval, 0);
    entry->section = name;
    settings.index = section->ReadInt(gtskeys::Index, -1);
    settings.type = section->ReadString(gtskeys::Name, QString());
    settings.address = section->ReadString(gtskeys::Address, QString());
    settings.pollInterval = PollInterval(interval);
    if (settings.index < 0 || settings.type.isEmpty() || settings.address.isEmpty() || interval <= 0)
        return false;
    settings.frequencies =
        PlantModule::ReadAssignments(*section, PlantModule::GetNumberOfInputsOf(settings.type));
    settings.label = section->ReadString(gtskeys::Label, QString()).left(MaxLabelLength);
    settings.labels = ReadLabels(*section, settings.frequencies.size());
    return true;
}

QString NodeName(const gtsconfig::Entry& entry) {
    return ModuleIdentity{entry.settings.type, entry.settings.index, QString()}.NodeName();
}

/// Modules of different types may share an index.
void ReplaceDoubledIndexes(std::vector<gtsconfig::Entry>* entries) {
    std::set<int> used;
    std::set<QString> names;
    std::vector<gtsconfig::Entry*> doubled;
    for (gtsconfig::Entry& entry : *entries) {
        used.insert(entry.settings.index);
        if (!names.insert(NodeName(entry)).second) doubled.push_back(&entry);
    }
    int free = 0;
    for (gtsconfig::Entry* const entry : doubled) {
        while (!used.insert(free).second)
            ++free;
        MCS_TRACE(QStringLiteral("Configuration: GTS/%1 has the index %2 of another module; %3 is used")
                      .arg(entry->section, QString::number(entry->settings.index), QString::number(free)));
        entry->settings.index = free;
    }
}

void SaveModule(ICfg& section, const PlantModule& module) {
    constexpr PollInterval Longest(std::numeric_limits<int>::max());  // that the configuration can hold
    const ModuleIdentity& identity = module.GetIdentity();
    section.WriteInt(gtskeys::Index, identity.index);
    section.WriteString(gtskeys::Name, identity.type);
    section.WriteString(gtskeys::Address, identity.address);
    section.WriteInt(gtskeys::PollInterval,
                     static_cast<int>(std::min(module.GetPollInterval(), Longest).count()));
    module.SaveAssignments(section);
    SaveLabel(section, identity.label);
    SaveLabels(section, module.GetSettings().labels);
}

}  // namespace

// Incomplete entries are left out without a word. (fixed: silently-skipped)
std::vector<gtsconfig::Entry> gtsconfig::Load(ICfg& gts) {
    const int count = gts.ReadInt(gtskeys::ModuleCount, 0);
    if (count > MaxModules)
        MCS_TRACE(QStringLiteral("Configuration: GTS/%1 is %2; the first %3 modules are used")
                      .arg(gtskeys::ModuleCount, QString::number(count), QString::number(MaxModules)));
    std::vector<Entry> entries;
    for (int i = 0; i < std::min(count, MaxModules); ++i) {
        Entry entry;
        if (ReadEntry(gts, SectionOf(i), &entry)) entries.push_back(entry);
    }
    ReplaceDoubledIndexes(&entries);
    return entries;
}

void gtsconfig::Save(ICfg& gts, const std::vector<PlantModule*>& modules, std::set<QString>* own) {
    const CfgSave save;
    const int count = static_cast<int>(modules.size());
    notloaded::Keep(gts, *own, count);
    gts.WriteInt(gtskeys::ModuleCount, count);
    std::set<QString> saved;
    for (const PlantModule* const module : modules) {
        const QString name = SectionOf(static_cast<int>(saved.size()));
        const std::unique_ptr<ICfg> section(gts.ProvideSection(name));
        SaveModule(*section, *module);
        saved.insert(name);
    }
    for (const QString& name : *own)
        if (saved.count(name) == 0) gts.RemoveSection(name);  // of a list that was longer
    *own = std::move(saved);
    gts.CommitKey(gtskeys::ModuleCount);
}

int gtsconfig::LowestFreeIndex(std::vector<int> used) {
    std::sort(used.begin(), used.end());
    int index = 0;
    for (const int number : used)
        if (number == index) ++index;
    return index;
}
