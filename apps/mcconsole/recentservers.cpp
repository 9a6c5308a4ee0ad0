// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/recentservers.h>

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
