// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <array>
#include <memory>

/// Three nodes of NATS of a test's own, on loopback, each with a disk for what they keep. Killed with this
/// object.
class NatsCluster {
  public:
    static constexpr int Nodes = 3;

    /// Starts all of them. \a configuration is added to each one's. False if they do not come up.
    bool Start(const QByteArray& configuration = QByteArray());
    /// Starts one that was killed, on the ports and the disk that it had.
    bool StartNode(int node);
    /// As kill -9 does.
    void Kill(int node) { Node(node).Kill(); }
    /// Keeps one from running, and lets it go on.
    void Freeze(int node, bool isFrozen);
    /// Waits until they keep what they are given: they have to agree on who leads.
    bool WaitUntilTheyKeep() const;

    int Port(int node) const { return m_ports[static_cast<std::size_t>(node % Nodes)]; }
    /// All nodes, \a first first.
    nats::NatsOptions Options(int first) const;
    /// "nats://127.0.0.1:PORT,.../STATION", likewise.
    QString Address(const QString& station, int first) const;
    QString Hosts(int first) const;

  private:
    ChildProgram& Node(int node) { return *m_nodes[static_cast<std::size_t>(node % Nodes)]; }

    QTemporaryDir m_folder;
    QByteArray m_configuration;
    std::array<int, Nodes> m_ports{};
    std::array<int, Nodes> m_clusterPorts{};
    std::array<std::unique_ptr<ChildProgram>, Nodes> m_nodes;
};
