// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <map>
#include <optional>
#include <set>

/// One configuration file, an INI file of QSettings, which several processes may use at once. Private to the
/// configuration layer.
///
/// QSettings reads and writes the format; when and where to is decided here. A commit builds the next file
/// aside and renames it, so that a reader, and whoever comes after a killed process, finds the old file or
/// the new one. Writers take turns: a commit takes in what others committed, key by key.
///
/// Keys are paths: sections and the key's name with "/" between them.
class CfgStore {
  public:
    using Contents = std::map<QString, QString>;

    /// Opens \a path. A file that is no INI file, or is too large to be one, is renamed and reported.
    explicit CfgStore(QString path);
    ~CfgStore();
    CfgStore(const CfgStore&) = delete;
    CfgStore& operator=(const CfgStore&) = delete;

    QString GetPath() const { return m_path; }

    std::optional<QString> Read(const QString& key) const;
    void Write(const QString& key, const QString& content);
    bool Commit();

    bool HasSection(const QString& prefix) const;
    void ProvideSection(const QString& prefix);
    void RemoveSection(const QString& prefix);
    /// Of all keys that begin with \a prefix, what follows it.
    QStringList GetKeys(const QString& prefix) const;

    /// Reports, once per key, that \a key holds \a content where \a wanted is needed, and keeps a copy of the
    /// file as it is, since the key may be written over from now on.
    void ReportMalformed(const QString& key, const QString& content, const char* wanted);

  private:
    /// Runs \a action while no other process writes the file. False if it cannot be locked.
    bool WithFileLock(const std::function<void()>& action) const;
    /// Takes over what is in the file, and puts a file that cannot be used aside. True if the file holds all
    /// that was written here. \a isLocked: within WithFileLock().
    bool Load(bool isLocked);
    bool Save() const;
    /// Why the file cannot be used; empty if it can, and \a contents is what it holds. \a isDamaged tells
    /// whether that is because of the file itself.
    QString ReadFile(bool isLocked, Contents* contents, bool* isDamaged) const;
    /// Reports \a defect, and renames a damaged file.
    void PutAside(const QString& defect, bool isDamaged);
    /// A name beside the file that is free, or under which \a content is kept already.
    QString NameAside(const QByteArray* content = nullptr) const;
    void Trace(const QString& message) const;

    QString m_path;
    QString m_file;       ///< what m_path leads to if it is a link, else the same
    QString m_obstacle;   ///< why the file that is in the way can neither be used nor put aside
    Contents m_contents;  ///< of the file, with the changes
    std::map<QString, std::optional<QString>> m_changes;  ///< not committed yet; no content: removed
    std::set<QString> m_providedSections;
    std::set<QString> m_reportedKeys;
    bool m_isFailureReported = false;
    bool m_isCopyKept = false;
};
