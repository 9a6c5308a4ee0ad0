// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/listenaddress.h>
#include <apps/common/programoptions.h>
#include <apps/mcserver/access/textlimits.h>
#include <apps/mcserver/program/devicechoice.h>

#include <platform/nats/natsoptions.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the command line asks for.
struct ServerOptions : ProgramOptions {
    bool makesToken = false;  ///< for the user and the role, in place of running
    QString user;
    QString role;

    /// What this is about as a service of the system's.
    enum class EService { None, Install, Remove, Run };
    EService service = EService::None;
    /// With what a service does what the other options say: files by their whole paths, since a service
    /// starts in some folder of the system's.
    QStringList serviceArguments;

    ListenAddress listen;
    QString certificateFile;
    QString privateKeyFile;
    QString caFile;
    bool isInsecure = false;
    bool isHeadless = false;
    QString screenshotDirectory;
    QString accessFile;
    QString configFile;
    QString scriptFile;
    DeviceChoice device;
    int maxSessions = VtServerOptions::DefaultMaxSessions;
    /// What clients may make the server keep.
    int memoryMiB = static_cast<int>(VtServerOptions::DefaultMemoryBytes / (1024 * 1024));
    TextLimits textLimits;
    QString name;
    nats::NatsOptions nats;  ///< no server: not over NATS
    QString station;         ///< what it is called there

    /// Reads \a arguments, the program's name first. Needs the application object.
    static ServerOptions Parse(const QStringList& arguments);
};
