// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/staticmpxorvsettings.h>

#include <apps/common/mpxorvname.h>
#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/mpxorv/mpxorvpath.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/config/icfg.h>

#include <QtCore/QDateTime>

#include <memory>
#include <set>

namespace {

QString BlankingKey() {
    return QStringLiteral("Blanking");
}

StaticMpxOrvSettings::Entry ReadEntry(ICfg& section, const QString& name) {
    StaticMpxOrvSettings::Entry entry;
    entry.name = name;
    entry.policies.SetToDefaultPolicy();
    const std::unique_ptr<ICfg> own(section.OpenSection(name));
    if (own == nullptr) return entry;
    entry.policies.ReadFromCfg(own.get());
    entry.comment = own->ReadString(mcskeys::Comment, QString());
    entry.obeysBlanking = own->ReadBool(BlankingKey(), true);
    const QString since = own->ReadString(serverkeys::BlankingSwitchedSince, QString());
    if (!QDateTime::fromString(since, Qt::ISODateWithMs).isValid()) return entry;
    entry.switchedSince = since;
    entry.switchedBy = peertext::Shown(own->ReadString(serverkeys::BlankingSwitchedBy, QString()));
    return entry;
}

}  // namespace

std::vector<StaticMpxOrvSettings::Entry> StaticMpxOrvSettings::Read(ICfg& cfg,
                                                                    std::vector<CodedText>* problems) {
    std::vector<Entry> entries;
    const std::unique_ptr<ICfg> section(cfg.OpenSection(mcskeys::StaticMpxORVs));
    if (section == nullptr) return entries;
    std::set<QString> known;
    const QString names = section->ReadString(QStringLiteral("Names"), QString());
    for (const QString& part : names.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString name = part.trimmed();
        CodedText problem;
        if (!IsMpxOrvName(name))
            problem = ECode::IsNoName;
        else if (known.count(name) != 0)
            problem = ECode::IsThereTwice;
        else if (int(entries.size()) == MaxEntries)
            problem = ECode::IsOneTooMany;
        if (problem.IsEmpty())
            entries.push_back(ReadEntry(*section, name));
        else
            problems->push_back({ECode::StaticMpxOrvUnusable, {peertext::Shown(name), problem}});
        known.insert(name);
    }
    return entries;
}

void StaticMpxOrvSettings::Write(ICfg& cfg, const std::vector<Entry>& entries) {
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(mcskeys::StaticMpxORVs));
    for (const Entry& entry : entries) {
        const std::unique_ptr<ICfg> own(section->ProvideSection(entry.name));
        entry.policies.WriteToCfg(own.get());
        own->WriteString(mcskeys::Comment, entry.comment);
        own->WriteBool(BlankingKey(), entry.obeysBlanking);
        if (entry.switchedSince.isEmpty()) continue;
        own->WriteString(serverkeys::BlankingSwitchedBy, entry.switchedBy);
        own->WriteString(serverkeys::BlankingSwitchedSince, entry.switchedSince);
    }
}
