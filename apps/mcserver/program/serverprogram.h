// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/qtclock.h>
#include <apps/mcserver/access/serveraccess.h>
#include <apps/mcserver/device/iorvdevice.h>
#include <apps/mcserver/device/orvscript.h>
#include <apps/mcserver/events/eventhistory.h>
#include <apps/mcserver/log/peertraces.h>
#include <apps/mcserver/program/configwatch.h>
#include <apps/mcserver/program/mcsserver.h>
#include <apps/mcserver/program/serveroptions.h>
#include <apps/mcserver/program/servicenotifier.h>
#include <apps/mcserver/program/stationoffer.h>

#include <platform/values/tree.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QString>

#include <memory>

/// The server as a program: a device, a tree, the server over both, and who may reach it. Needs the
/// application object. Main thread.
class ServerProgram {
  public:
    explicit ServerProgram(const ServerOptions& options);

    /// Reads the files, keeps the configuration for itself, starts the server and listens. False with the
    /// reason, one line, in \a error.
    bool Start(QString* error);
    /// Reads the access file and the certificates anew. What would keep the server from starting is told in
    /// the log, and all goes on as before; else sessions that came in by what does not hold any more end.
    void ReadFilesAnew();
    /// Ends all sessions and saves the configuration.
    void Stop();

    McsServer& GetServer() { return m_server; }
    IClock& GetClock() { return m_clock; }
    const VtServer& GetListener() const { return m_listener; }
    int GetPort() const { return m_listener.GetPort(); }

    /// A fresh token for a user, and the line that admits it, for people to read.
    static QString MakeToken(const QString& user, const QString& role);

  private:
    bool ReadAccessFile(VtAccessFile* file, QString* error) const;
    bool Listen(QString* error);
    /// How many clients may be there at once: as many as wanted, if the system allows it.
    int CountPlaces() const;
    /// The device that is wanted; if it cannot be had, one that is not there, and why in m_deviceFault.
    std::unique_ptr<IOrvDevice> MakeDevice();
    /// Tells the service manager that the event loop runs, from now on, often enough.
    void ShowThatItRuns();

    ServerOptions m_options;
    ServiceNotifier m_notifier;
    QtClock m_clock;
    PeerTraces m_peerTraces;
    values::Tree m_tree;
    QString m_deviceFault;  ///< why there is not the one that is wanted; empty: there is
    std::unique_ptr<IOrvDevice> m_device;
    McsServer m_server;
    ConfigWatch m_configWatch;
    ServerAccess m_access;
    EventHistory m_eventHistory;
    VtServer m_listener;
    StationOffer m_station;
    OrvScript m_script;
};
