// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/applicationend.h>
#include <platform/app/platformexport.h>
#include <platform/config/cfgdamage.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

class CfgStore;
class ICfg;

/// Knows the application's name and where its configuration is kept. Main thread.
class MCS_PLATFORM_EXPORT CfgCenter {
  public:
    static CfgCenter& Instance();  ///< the one of the process
    CfgCenter(const CfgCenter&) = delete;
    CfgCenter& operator=(const CfgCenter&) = delete;

    /// The name set last, or else the application object's.
    static QString GetAppName();
    static void SetAppName(const QString& name);

    /// Keeps the configuration in \a file from now on; empty: in the user's configuration directory, in
    /// "MultiChannelServer/<application name>.ini". Sections opened before stay on the file they came from.
    void SetStorePath(const QString& file);
    QString GetStorePath() const;

    /// How long to wait for another process that writes the file; 1 s unless set. One that was waited for in
    /// vain is not waited for again until it is done, so that the end of a program takes no longer either.
    void SetPatience(std::chrono::milliseconds patience);

    /// The root section of the store, owned by the caller, never null. A file that cannot be parsed is kept
    /// aside under another name, with a trace, and the store starts empty. One that cannot be opened or read
    /// stays, with a trace; it is tried again at each opening and each commit, and not written until then.
    ICfg* OpenRoot();

    /// For a server: keeps the file to the end of this process, or until another path is set. False with the
    /// reason, one line, in \a error if another server has it, whose name that is, or if it cannot be read.
    ///
    /// What others edit in the file from now on lasts: a key that the server writes as it knew it before the
    /// edit keeps what was edited. A key that the server changes is the server's.
    bool HoldStore(QString* error);
    /// Looks whether somebody edited the file, by its time and size, and takes that in, once it rested from
    /// one call to the next. The keys that were edited since the last call, as paths.
    QStringList LookForEdits();
    /// Takes in what other programs have committed to the file since it was read; what cannot be read stays
    /// as it was known.
    void Refresh();
    /// What was found damaged of the file, at its opening or since, and not taken from here yet; also traced.
    std::vector<CfgDamage> TakeDamages();
    /// Keeps a copy of the file as it is now beside it, once per opening, before something of it is written
    /// over. The copy's name; empty if there is none.
    QString KeepCopy();
    /// Commits what nobody committed. Empty, or why the last changes are not in the file, and of which keys
    /// that are no defaults, one line: programs say it at their end, since what saves by itself, such as a
    /// window's place, tells nobody.
    QString Finish();

  private:
    CfgCenter();
    ~CfgCenter();

    CfgStore& OpenStore();
    void End();

    QString m_appName;
    QString m_storePath;
    std::chrono::milliseconds m_patience;
    std::shared_ptr<CfgStore> m_store;  ///< shared by all sections opened on it
    std::optional<ApplicationEnd> m_applicationEnd;
};
