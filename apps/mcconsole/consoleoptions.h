// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/programoptions.h>
#include <apps/common/serveraddress.h>

#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// What the command line asks for.
struct ConsoleOptions : ProgramOptions {
    std::vector<ServerAddress> servers;  ///< a tab each; none: ask
    VtClientOptions client;
    bool isEncrypted = false;  ///< whichever server that will be
    QString mpxOrvName;
    QString configFile;
    QString screenshotDirectory;
    QString locale;       ///< empty: the system's
    bool isDark = false;  ///< whatever the configuration says

    /// Reads \a arguments, the program's name first; \a environmentToken stands in where no token is given.
    /// Needs the application object.
    static ConsoleOptions Parse(const QStringList& arguments, const QString& environmentToken);
};
