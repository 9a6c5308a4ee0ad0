// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/cfgdamage.h>
#include <platform/config/store/cfgfile.h>
#include <platform/config/store/cfglock.h>
#include <platform/config/store/cfgworkingcopy.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

/// One configuration file, which several processes may use at once. Main thread.
///
/// A commit takes the file's lock, reads the file, merges, and replaces it at once, so that a reader, and
/// whoever comes after a killed process, finds the old file or the new one.
class CfgStore : public std::enable_shared_from_this<CfgStore> {
  public:
    /// Opens \a path. A file that cannot be what it should be is renamed and reported; one that cannot be
    /// read is reported, left alone, and tried again. \a patience is for other processes.
    CfgStore(QString path, std::chrono::milliseconds patience);
    /// Commits what nobody committed.
    ~CfgStore();
    CfgStore(const CfgStore&) = delete;
    CfgStore& operator=(const CfgStore&) = delete;

    QString GetPath() const { return m_path; }
    void SetPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    std::optional<QString> Read(const QString& key) const { return m_copy.Read(key); }
    /// Says that \a key, which is missing, reads as \a content.
    void Assume(const QString& key, const QString& content) { m_copy.Assume(key, content); }
    void Write(const QString& key, const QString& content);
    bool HasSection(const QString& prefix) const { return m_copy.HasSection(prefix); }
    void ProvideSection(const QString& prefix) { m_copy.ProvideSection(prefix); }
    void RemoveSection(const QString& prefix) { m_copy.RemoveSection(prefix); }
    QStringList GetKeys(const QString& prefix) const { return m_copy.GetKeys(prefix); }

    /// Brings the changes to the file; within a CfgSave at its end, and true until then.
    bool Commit();
    bool CommitNow();
    /// Why the last commit failed, one line that names the file and, after \a consequence, the keys that are
    /// not in it. Empty if it did not.
    QString GetProblem(const QString& consequence) const;
    /// Whether the file lacks more than what is the default anyway.
    bool HasUnstoredKeys() const { return !m_copy.GetUnstoredKeys().isEmpty(); }
    /// Reads a file that could not be read before.
    void TryAgain();

    /// Keeps the file for this process alone among those that ask, to the end of the store, and what others
    /// edit in it meanwhile. False with the reason, one line, in \a error.
    bool Hold(QString* error);
    /// Takes in what others edited, once the file has rested from one call to the next. The keys of what is
    /// new since the last call.
    QStringList LookForEdits();

    /// Takes in what other programs have committed, who replace the file whole.
    void Refresh() { LoadAsItIs(); }

    /// What was found damaged of the file since the last call.
    std::vector<CfgDamage> TakeDamages();
    /// Keeps a copy of the file as it is beside it, once. Its name; empty if it could not be made.
    QString KeepCopy();

    /// Reports, once per key, that \a key holds \a content where \a wanted is needed, and keeps a copy of the
    /// file as it is, since the key may be written over from now on.
    void ReportMalformed(const QString& key, const QString& content, const char* wanted);

  private:
    /// What tells an edited file from one that was not touched.
    struct Stamp {
        qint64 size = -1;
        qint64 time = 0;  ///< ms since 1970
        bool operator==(const Stamp& other) const { return size == other.size && time == other.time; }
    };

    void Open();
    /// Takes over what is in the file. Returns why it is damaged; empty for a file that is not, or cannot be
    /// read, which m_obstacle tells.
    QString Load();
    /// The same; a damaged file stays where it is.
    void LoadAsItIs();
    /// The same; a damaged file is renamed and reported. Only under the lock.
    void LoadOrPutAside(const char* consequence);
    void NoteDamage(const QString& reason, const QString& keptAs);
    /// Whether a file that is held lost what it held.
    bool IsToBeRestored() const;
    /// Why the changes are not in the file; empty if they are.
    QString Store();
    QString Replace();
    /// Has \a action done; while another program has the file for a moment, again.
    cfgfile::Result Patiently(const std::function<cfgfile::Result()>& action) const;
    Stamp GetStamp() const;
    /// A name beside the file that is free, or under which \a content is kept already.
    QString NameAside(const QByteArray* content = nullptr) const;

    QString m_path;
    QString m_file;      ///< what m_path leads to if it is a link, else the same
    QString m_obstacle;  ///< why what has the file's name cannot be read, and must not be replaced
    QString m_problem;   ///< why the last commit failed; empty if it did not
    std::chrono::milliseconds m_patience;
    bool m_isPatienceSpent =
        false;  ///< others were waited for in vain, and are not again until they are done
    CfgWorkingCopy m_copy;
    QByteArray m_bytes;  ///< of the file when it was read or written last
    Stamp m_stamp;       ///< at that time
    Stamp m_newStamp;    ///< seen since, while the file may still be written
    CfgLock m_hold;
    std::set<QString> m_reportedKeys;
    std::optional<QString> m_copyName;  ///< once it was tried to keep one
    std::vector<CfgDamage> m_damages;   ///< not taken yet
    bool m_isOpened = false;
};
