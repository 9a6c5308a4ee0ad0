// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <memory>

class CfgStore;
class ICfg;

/// Knows the application's name and where its configuration is kept. Main thread.
class MCS_PLATFORM_EXPORT CfgCenter {
  public:
    static CfgCenter& Instance();
    CfgCenter(const CfgCenter&) = delete;
    CfgCenter& operator=(const CfgCenter&) = delete;

    /// The name set last, or else the application object's.
    static QString GetAppName();
    static void SetAppName(const QString& name);

    /// Keeps the configuration in \a file from now on; empty: in the user's configuration directory, in
    /// "MultiChannelServer/<application name>.ini". Sections opened before stay on the file they came from.
    void SetStorePath(const QString& file);
    QString GetStorePath() const;

    /// The root section of the store, owned by the caller, never null. A file that cannot be parsed is kept
    /// aside under another name, with a trace, and the store starts empty.
    ICfg* OpenRoot();

  private:
    CfgCenter();
    ~CfgCenter();

    QString m_appName;
    QString m_storePath;
    std::shared_ptr<CfgStore> m_store;  ///< shared by all sections opened on it
};
