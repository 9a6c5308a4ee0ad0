// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <memory>

/// Three nodes of NATS on this machine, with users, TLS and a disk, as deploy/nats/make-cluster sets them up.
class DemoCluster {
  public:
    /// The station that the demonstration's server is.
    static QString Station();

    /// Writes all of it into \a folder, which is not there yet, by the program \a script, and starts the
    /// nodes. False with the reason in one line in \a error.
    bool Start(const QString& script, const QString& folder, QString* error);
    /// Ends the first node as kill -9 does.
    void KillFirstNode();
    void Stop();

    QString Hosts() const;  ///< of all nodes, as "HOST:PORT,..."
    QString FirstNode() const;
    /// The environment of a program that is \a user to NATS.
    QProcessEnvironment EnvironmentOf(const QString& user) const;

  private:
    bool StartNode(std::size_t node, QString* error);

    QString m_folder;
    std::array<int, 3> m_ports{};  ///< for clients, of the nodes
    std::array<std::unique_ptr<ChildProgram>, 3> m_nodes;
};
