// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/nats/natscluster.h>

#include <platform/nats/natsbusmaker.h>
#include <tests/support/waituntil.h>

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>

#include <chrono>
#include <csignal>
#include <optional>

namespace {

constexpr std::chrono::seconds NodePatience(20);
constexpr int KeepPatience = 30'000;  // ms: they elect a leader first

}  // namespace

// Somebody else may be faster than a node; then that does not come up.
bool NatsCluster::Start(const QByteArray& configuration) {
    m_configuration = configuration;
    std::array<QTcpServer, 2 * Nodes> servers;
    for (int node = 0; node < Nodes; ++node) {
        const auto at = static_cast<std::size_t>(node);
        for (QTcpServer* const server : {&servers[2 * at], &servers[2 * at + 1]})
            if (!server->listen(QHostAddress(QHostAddress::LocalHost))) return false;
        m_ports[at] = servers[2 * at].serverPort();
        m_clusterPorts[at] = servers[2 * at + 1].serverPort();
    }
    for (QTcpServer& server : servers)
        server.close();
    for (int node = 0; node < Nodes; ++node)
        if (!StartNode(node)) return false;
    return true;
}

bool NatsCluster::StartNode(int node) {
    const auto at = static_cast<std::size_t>(node % Nodes);
    QStringList routes;
    for (const int port : m_clusterPorts)
        routes << QStringLiteral("\"nats-route://127.0.0.1:%1\"").arg(port);
    const QString name = QStringLiteral("node%1").arg(at + 1);
    const QString store = m_folder.filePath(name);
    const QString text =
        QStringLiteral(
            "server_name: %1\nhost: 127.0.0.1\nport: %2\n"
            "cluster { name: test, host: 127.0.0.1, port: %3, no_advertise: true, routes: [%4] }\n")
            .arg(name)
            .arg(m_ports[at])
            .arg(m_clusterPorts[at])
            .arg(routes.join(QLatin1Char(',')));
    const QString file = store + QStringLiteral(".conf");
    QFile conf(file);
    if (!conf.open(QIODevice::WriteOnly)) return false;
    conf.write(text.toUtf8() + m_configuration + '\n');
    conf.close();
    m_nodes[at] = std::make_unique<ChildProgram>(ChildProgram::EErrors::WithOutput);
    const auto isReady = [](const QString& line) { return line.contains(QLatin1String("Server is ready")); };
    return m_nodes[at]->Start(QStringLiteral(NATS_SERVER),
                              {QStringLiteral("-c"), file, QStringLiteral("-sd"), store}) &&
           !m_nodes[at]->WaitForLine(isReady, NodePatience).isNull();
}

void NatsCluster::Freeze(int node, bool isFrozen) {
    ::kill(static_cast<pid_t>(Node(node).GetProcessId()), isFrozen ? SIGSTOP : SIGCONT);
}

bool NatsCluster::WaitUntilTheyKeep() const {
    QString problem;
    const auto bus = nats::MakeBus(Options(0), &problem);
    bus->Open(true);
    std::optional<bool> doTheyKeep = false;  // none while asked
    return WaitUntil(
        [&] {
            if (doTheyKeep.value_or(false)) return true;
            if (!doTheyKeep || bus->State() != nats::INatsBus::EState::Open) return false;
            doTheyKeep.reset();
            bus->Request("$JS.API.INFO", "", std::chrono::seconds(1), [&](const nats::NatsAnswer& answer) {
                doTheyKeep = answer.problem.isEmpty() && !answer.data.contains("\"error\"");
            });
            return false;
        },
        KeepPatience);
}

nats::NatsOptions NatsCluster::Options(int first) const {
    nats::NatsOptions options;
    for (int i = 0; i < Nodes; ++i)
        options.servers.push_back({QStringLiteral("127.0.0.1"), Port(first + i)});
    return options;
}

QString NatsCluster::Hosts(int first) const {
    QStringList hosts;
    for (int i = 0; i < Nodes; ++i)
        hosts << QStringLiteral("127.0.0.1:%1").arg(Port(first + i));
    return hosts.join(QLatin1Char(','));
}

QString NatsCluster::Address(const QString& station, int first) const {
    return QStringLiteral("nats://%1/%2").arg(Hosts(first), station);
}
