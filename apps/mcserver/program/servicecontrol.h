// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

/// The server as a service that the system's service manager installs, starts and stops. Where the manager
/// runs ordinary programs instead, as systemd does, there is an Obstacle(), and nothing else is called.
namespace servicecontrol {

/// Why this system has no such services, and what it has; one line, empty if it has them.
QString Obstacle();

/// Installs this program as the service \a name, started with the system with \a arguments. Returns why it
/// cannot be, in one line; empty if it is done.
QString Install(const QString& name, const QStringList& arguments);
/// Stops and removes the service \a name, likewise. What it has stored stays.
QString Remove(const QString& name);
/// Where the service \a name keeps its configuration unless told otherwise.
QString ConfigFile(const QString& name);

/// Runs \a run as the service \a name that the manager has just started: the manager's orders are told as
/// ShutdownSignals, the standard streams go to the system's event log. \return the exit code, which the
/// manager is told too. From main().
int Run(const QString& name, const std::function<int()>& run);

}  // namespace servicecontrol
