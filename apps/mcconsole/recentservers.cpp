// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/recentservers.h>

#include <apps/mcconsole/stations/natsplace.h>

#include <platform/config/icfg.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int MaxStoredLength = 1024;

QString SectionName() {
    return QStringLiteral("RecentServers");
}

QString Key(const char* name, int index) {
    return QString::fromLatin1(name) + QString::number(index);
}

QString Unspoilt(const QString& text) {
    return text.size() > MaxStoredLength ? QString() : text;
}

}  // namespace

void RecentServers::Read(ICfg& cfg) {
    m_entries.clear();
    m_nats.clear();
    const std::unique_ptr<ICfg> section(cfg.OpenSection(SectionName()));
    if (!section) return;
    for (int i = MaxEntries - 1; i >= 0; --i) {
        Entry entry;
        const QString text = section->ReadString(Key("Server", i), QString());
        if (text.isEmpty() || !entry.server.Parse(text).isEmpty()) continue;
        entry.user = Unspoilt(section->ReadString(Key("User", i), QString()));
        entry.caFile = Unspoilt(section->ReadString(Key("CaFile", i), QString()));
        Add(entry);
    }
    for (int i = MaxEntries - 1; i >= 0; --i) {
        const QString place = section->ReadString(Key("Nats", i), QString());
        if (NatsPlace().Parse(place)) AddNats(place);
    }
}

void RecentServers::Write(ICfg& cfg) const {
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(SectionName()));
    int index = 0;
    for (const Entry& entry : m_entries) {
        section->WriteString(Key("Server", index), entry.server.ToText());
        section->WriteString(Key("User", index), entry.user);
        section->WriteString(Key("CaFile", index), entry.caFile);
        ++index;
    }
    for (int i = 0; i < m_nats.size(); ++i)
        section->WriteString(Key("Nats", i), m_nats[i]);
    section->CommitKey(Key("Server", 0));
}

void RecentServers::Add(const Entry& entry) {
    const QString text = entry.server.ToText();
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                   [&](const Entry& known) { return known.server.ToText() == text; }),
                    m_entries.end());
    m_entries.insert(m_entries.begin(), entry);
    if (m_entries.size() > MaxEntries) m_entries.resize(MaxEntries);
}

bool RecentServers::AddNats(const QString& place) {
    if (place.isEmpty() || (!m_nats.isEmpty() && m_nats.front() == place)) return false;
    m_nats.removeAll(place);
    m_nats.prepend(place);
    if (m_nats.size() > MaxEntries) m_nats.removeLast();
    return true;
}

bool RecentServers::TakeNats(const RecentServers& other) {
    if (m_nats == other.m_nats) return false;
    m_nats = other.m_nats;
    return true;
}
