// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/keptstations.h>

#include <platform/config/icfg.h>

#include <algorithm>
#include <memory>

namespace {

constexpr char StationsSection[] = "Stations";
constexpr int MaxKeptText = 1024;

QString StationKey(const char* name, int index) {
    return QString::fromLatin1(name) + QString::number(index);
}

QString KeptText(ICfg& section, const char* name, int index) {
    const QString text = section.ReadString(StationKey(name, index), QString());
    return text.size() > MaxKeptText ? QString() : text;
}

}  // namespace

void KeptStations::Read(ICfg& cfg) {
    *this = KeptStations();
    const std::unique_ptr<ICfg> section(cfg.OpenSection(QLatin1String(StationsSection)));
    if (!section) return;
    const int count = std::clamp(section->ReadInt(QStringLiteral("Count"), 0), 0, MaxStations);
    for (int i = 0; i < count; ++i) {
        RecentServers::Entry entry;
        const QString text = KeptText(*section, "Server", i);
        if (text.isEmpty() || !entry.server.Parse(text).isEmpty()) continue;
        entry.user = KeptText(*section, "User", i);
        entry.caFile = KeptText(*section, "CaFile", i);
        entries.push_back(entry);
    }
    const int last = std::max(static_cast<int>(entries.size()) - 1, 0);
    front = std::clamp(section->ReadInt(QStringLiteral("Front"), 0), 0, last);
}

void KeptStations::Write(ICfg& cfg) const {
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(QLatin1String(StationsSection)));
    int index = 0;
    for (const RecentServers::Entry& entry : entries) {
        section->WriteString(StationKey("Server", index), entry.server.ToText());
        section->WriteString(StationKey("User", index), entry.user);
        section->WriteString(StationKey("CaFile", index), entry.caFile);
        ++index;
    }
    section->WriteInt(QStringLiteral("Count"), index);
    section->WriteInt(QStringLiteral("Front"), front);
    section->CommitKey(QStringLiteral("Count"));
}
