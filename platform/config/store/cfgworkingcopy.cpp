// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgworkingcopy.h>

#include <utility>

CfgWorkingCopy::Content CfgWorkingCopy::Find(const CfgContents& contents, const QString& key) {
    const auto found = contents.find(key);
    return found != contents.end() ? std::make_optional(found->second) : std::nullopt;
}

void CfgWorkingCopy::Set(const QString& key, const Content& content) {
    if (content)
        m_contents[key] = *content;
    else
        m_contents.erase(key);
}

std::optional<QString> CfgWorkingCopy::Read(const QString& key) const {
    return Find(m_contents, key);
}

void CfgWorkingCopy::Write(const QString& key, const QString& content) {
    if (m_keepsEdits) {
        if (IsBeforeEdit(key, content)) return;
        if (m_changes.count(key) == 0 && Read(key) == content) return;
    }
    // Also what is there already: others may have committed something else since.
    m_contents[key] = content;
    m_changes[key] = content;
}

bool CfgWorkingCopy::IsBeforeEdit(const QString& key, const QString& content) {
    const auto edit = m_edits.find(key);
    if (edit == m_edits.end()) return false;
    if (edit->second != content) {
        m_edits.erase(edit);  // the program has something new to say
        return false;
    }
    m_changes.erase(key);  // its section may have been removed in order to be written anew
    Set(key, Find(m_stored, key));
    return true;
}

bool CfgWorkingCopy::HasSection(const QString& prefix) const {
    if (prefix.isEmpty()) return true;  // the root
    const auto content = m_contents.lower_bound(prefix);
    if (content != m_contents.end() && content->first.startsWith(prefix)) return true;
    // Also a section below which there is one that was provided.
    const auto provided = m_providedSections.lower_bound(prefix);
    return provided != m_providedSections.end() && provided->startsWith(prefix);
}

void CfgWorkingCopy::ProvideSection(const QString& prefix) {
    m_providedSections.insert(prefix);
}

void CfgWorkingCopy::RemoveSection(const QString& prefix) {
    for (auto section = m_providedSections.lower_bound(prefix);
         section != m_providedSections.end() && section->startsWith(prefix);)
        section = m_providedSections.erase(section);
    for (auto content = m_contents.lower_bound(prefix);
         content != m_contents.end() && content->first.startsWith(prefix);) {
        m_changes[content->first] = std::nullopt;
        content = m_contents.erase(content);
    }
}

QStringList CfgWorkingCopy::GetKeys(const QString& prefix) const {
    QStringList keys;
    for (auto content = m_contents.lower_bound(prefix);
         content != m_contents.end() && content->first.startsWith(prefix); ++content)
        keys += content->first.mid(prefix.size());
    return keys;
}

void CfgWorkingCopy::TakeIn(CfgContents stored) {
    if (m_keepsEdits) NoteEdits(stored);
    m_isBlind = false;
    m_stored = std::move(stored);
    m_contents = m_stored;
    for (const auto& [key, content] : m_changes)
        Set(key, content);
}

void CfgWorkingCopy::TakeInLoss() {
    m_isBlind = false;
    m_stored.clear();
}

void CfgWorkingCopy::ForEachDifference(const CfgContents& before, const CfgContents& after,
                                       const KeyVisitor& visit) {
    auto old = before.begin();
    auto next = after.begin();
    while (old != before.end() || next != after.end()) {
        const bool isGone = next == after.end() || (old != before.end() && old->first < next->first);
        const bool isNew = old == before.end() || (!isGone && next->first < old->first);
        if (isGone) {
            visit(old->first, old->second, std::nullopt);
            ++old;
        } else if (isNew) {
            visit(next->first, std::nullopt, next->second);
            ++next;
        } else {
            if (old->second != next->second) visit(next->first, old->second, next->second);
            ++old;
            ++next;
        }
    }
}

QStringList CfgWorkingCopy::GetUnstoredKeys() const {
    QStringList keys;
    ForEachDifference(m_stored, m_contents,
                      [&](const QString& key, const Content& before, const Content& after) {
                          const bool isDefault = !before && after == Find(m_assumed, key);
                          if (!isDefault) keys << key;
                      });
    return keys;
}

void CfgWorkingCopy::NoteEdits(const CfgContents& stored) {
    ForEachDifference(m_stored, stored, [this](const QString& key, const Content&, const Content& after) {
        NoteEdit(key, after);
    });
}

void CfgWorkingCopy::NoteEdit(const QString& key, const Content& after) {
    const Content known = GetKnown(key);
    if (known == after) return;
    const auto change = m_changes.find(key);
    const bool isDefault = m_isBlind || (!Find(m_stored, key) && known == Find(m_assumed, key));
    if (change != m_changes.end() && !isDefault) {
        m_overruledKeys << key;
        return;
    }
    if (change != m_changes.end()) m_changes.erase(change);
    m_editedKeys.insert(key);
    const auto [edit, isFirst] = m_edits.emplace(key, known);
    if (!isFirst && edit->second == after) m_edits.erase(edit);  // undone
}

CfgWorkingCopy::Content CfgWorkingCopy::GetKnown(const QString& key) const {
    const auto change = m_changes.find(key);
    if (change != m_changes.end()) return change->second;
    const Content content = Find(m_contents, key);
    return content ? content : Find(m_assumed, key);
}

void CfgWorkingCopy::Assume(const QString& key, const QString& content) {
    if (m_keepsEdits) m_assumed[key] = content;
}

void CfgWorkingCopy::MarkStored() {
    m_stored = m_contents;
    m_changes.clear();
}

QStringList CfgWorkingCopy::TakeEditedKeys() {
    QStringList keys;
    for (const QString& key : std::exchange(m_editedKeys, {}))
        keys << key;
    return keys;
}

QStringList CfgWorkingCopy::TakeOverruledKeys() {
    return std::exchange(m_overruledKeys, {});
}
