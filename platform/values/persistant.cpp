// SPDX-License-Identifier: Apache-2.0
#include <platform/values/persistant.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/cfgsave.h>

#include <utility>

namespace values {

PersistantOwner::~PersistantOwner() = default;

Persistant::Persistant(QString name, PersistantOwner* owner)
    : m_name(std::move(name)), m_owner(owner), m_life(std::make_shared<char>()) {}

Persistant::~Persistant() = default;

void Persistant::Add(int* member, const QString& key, int fallback) {
    m_members.push_back({member, key, fallback});
}

std::unique_ptr<ICfg> Persistant::Section(const QString& subPath, bool create) const {
    std::unique_ptr<ICfg> section(CfgCenter::Instance().OpenRoot());
    for (const QString& name : {m_name, subPath}) {
        if (name.isEmpty() || !section) continue;
        section.reset(create ? section->ProvideSection(name) : section->OpenSection(name));
    }
    return section;
}

void Persistant::Read(const QString& subPath, ICfg::View /*view*/) {
    const std::unique_ptr<ICfg> section = Section(subPath, false);
    for (const Member& kept : m_members)
        *kept.member = section ? section->ReadInt(kept.key, kept.fallback) : kept.fallback;
    if (m_owner != nullptr) m_owner->ApplyPersistantAfterRead();
}

void Persistant::Write(const QString& subPath, ICfg::View /*view*/) {
    const std::weak_ptr<const void> life = m_life;
    if (m_owner != nullptr) m_owner->ApplyPersistantBeforeWrite();
    if (life.expired()) return;
    const CfgSave save;
    const std::unique_ptr<ICfg> section = Section(subPath, true);
    for (const Member& kept : m_members)
        section->WriteInt(kept.key, *kept.member);
    for (const Member& kept : m_members)
        section->CommitKey(kept.key);
}

}  // namespace values
