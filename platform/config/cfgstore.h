// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <optional>
#include <set>

class QSettings;

/// One configuration file: an INI file of QSettings in UTF-8, which several processes may use at once.
/// Private to the configuration layer.
///
/// A commit replaces the file as a whole (write aside, then rename), so that a reader, and whoever comes
/// after a killed process, finds the old file or the new one. Writers take turns: a commit takes in what
/// others committed, key by key.
class CfgStore {
  public:
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

    /// Reports, once per key, that \a key holds \a content where \a wanted is needed, and keeps a copy of the
    /// file as it is, since the key may be written over from now on.
    void ReportMalformed(const QString& key, const QString& content, const char* wanted);

  private:
    /// Runs \a action while no other process writes the file. False if it cannot be locked.
    bool WithFileLock(const std::function<void()>& action) const;
    void Open();
    /// Why the file cannot be used; empty if it can.
    QString Defect() const;
    /// A name beside the file under which nothing is yet.
    QString NameAside() const;
    void Trace(const QString& message) const;

    QString m_path;
    std::unique_ptr<QSettings> m_settings;
    std::set<QString> m_emptySections;  ///< provided here, and nothing written yet
    std::set<QString> m_reportedKeys;
    bool m_isDirty = false;
    bool m_isFailureReported = false;
    bool m_isCopyKept = false;
};
