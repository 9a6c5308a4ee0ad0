// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/store/cfgcontents.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <map>
#include <optional>
#include <set>

/// What a program sees of a configuration file: what the file held last, with the program's own changes. What
/// others wrote to the file meanwhile is merged key by key; of a key that both changed, the program's content
/// holds. Knows no files. Main thread.
class CfgWorkingCopy {
  public:
    std::optional<QString> Read(const QString& key) const;
    void Write(const QString& key, const QString& content);
    bool HasSection(const QString& prefix) const;
    void ProvideSection(const QString& prefix);
    void RemoveSection(const QString& prefix);
    /// Of all keys that begin with \a prefix, what follows it.
    QStringList GetKeys(const QString& prefix) const;

    /// What the file is to hold.
    const CfgContents& Get() const { return m_contents; }
    /// Whether something was written or removed since the file held all.
    bool HasChanges() const { return !m_changes.empty(); }
    bool IsStored() const { return m_contents == m_stored; }
    /// The keys of which the file holds something else, or nothing where there is more than the default.
    QStringList GetUnstoredKeys() const;

    /// The file holds \a stored now.
    void TakeIn(CfgContents stored);
    /// The file is not there, or empty. What is known stays: a file may go by mistake, and for a moment also
    /// while somebody edits it.
    void TakeInLoss();
    /// The file holds all of it now.
    void MarkStored();

    /// From now on what others edit in the file lasts: to write again what was there before the edit is no
    /// change, since a program that saves all it knows does not mean to undo the edit.
    void KeepEdits() { m_keepsEdits = true; }
    bool KeepsEdits() const { return m_keepsEdits; }
    /// The file cannot be read. What the program writes until it can be are defaults as far as anybody knows:
    /// what the file turns out to hold counts for more, and lasts like an edit.
    void StartBlindly() { m_isBlind = m_keepsEdits = true; }
    /// The program goes on with \a content for \a key, which is missing: as if it were there for those who
    /// edit.
    void Assume(const QString& key, const QString& content);
    /// The keys that others edited since the last call, whose edits last.
    QStringList TakeEditedKeys();
    /// Those of which the program's own content holds.
    QStringList TakeOverruledKeys();

  private:
    using Content = std::optional<QString>;  // none: the key is not there

    using KeyVisitor = std::function<void(const QString& key, const Content& before, const Content& after)>;

    /// Visits the keys of which \a before and \a after hold different contents.
    static void ForEachDifference(const CfgContents& before, const CfgContents& after,
                                  const KeyVisitor& visit);
    static Content Find(const CfgContents& contents, const QString& key);
    void Set(const QString& key, const Content& content);
    void NoteEdits(const CfgContents& stored);
    void NoteEdit(const QString& key, const Content& after);
    /// What the program works with.
    Content GetKnown(const QString& key) const;
    /// Whether the program means what it knew before somebody edited \a key, which lasts then.
    bool IsBeforeEdit(const QString& key, const QString& content);

    CfgContents m_contents;                ///< of the file, with the changes
    CfgContents m_stored;                  ///< of the file
    std::map<QString, Content> m_changes;  ///< not in the file yet
    std::map<QString, Content> m_edits;    ///< by others, with what the program knew before
    CfgContents m_assumed;                 ///< of keys that are missing
    QStringList m_overruledKeys;           ///< not told yet
    std::set<QString> m_editedKeys;        ///< not told yet
    std::set<QString> m_providedSections;
    bool m_keepsEdits = false;
    bool m_isBlind = false;
};
