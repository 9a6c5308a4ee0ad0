// SPDX-License-Identifier: Apache-2.0
#include "democluster.h"

#include <apps/common/eventwait.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

namespace {

constexpr std::chrono::seconds ClusterPatience(60);
constexpr std::chrono::seconds ClusterStopTime(5);
constexpr std::chrono::milliseconds ClusterLookInterval(100);

QString NameOf(std::size_t node) {
    return QStringLiteral("node%1").arg(node + 1);
}

/// Ports that nobody listens on. Somebody else may be faster than the node; then it does not start, and says
/// so.
std::vector<int> FreePorts(std::size_t count) {
    std::vector<QTcpServer> servers(count);
    std::vector<int> ports;
    for (QTcpServer& server : servers) {
        server.listen(QHostAddress(QHostAddress::LocalHost));
        ports.push_back(server.serverPort());
    }
    return ports;
}

bool Listens(int port) {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
    return eventwait::Until([&socket] { return socket.state() != QAbstractSocket::ConnectingState; },
                            ClusterPatience) &&
           socket.state() == QAbstractSocket::ConnectedState;
}

}  // namespace

QString DemoCluster::Station() {
    return QStringLiteral("demo");
}

bool DemoCluster::Start(const QString& script, const QString& folder, QString* error) {
    m_folder = folder;
    const std::vector<int> ports = FreePorts(3 * m_nodes.size());
    QStringList arguments{folder, QStringLiteral("--station"), Station()};
    for (std::size_t node = 0; node < m_nodes.size(); ++node) {
        m_ports[node] = ports[3 * node];
        arguments << QStringLiteral("--node")
                  << QStringLiteral("%1=127.0.0.1:%2:%3:%4")
                         .arg(NameOf(node))
                         .arg(ports[3 * node])
                         .arg(ports[3 * node + 1])
                         .arg(ports[3 * node + 2]);
    }
    ChildProgram maker;
    const ProgramOutcome outcome = maker.Run(script, arguments, ClusterPatience);
    if (outcome.code != 0) {
        const QString said = QString::fromUtf8(outcome.errors).trimmed();
        *error = QStringLiteral("%1 fails: %2")
                     .arg(script, said.isEmpty() ? QStringLiteral("it does not end in time") : said);
        return false;
    }
    for (std::size_t node = 0; node < m_nodes.size(); ++node)
        if (!StartNode(node, error)) return false;
    return true;
}

bool DemoCluster::StartNode(std::size_t node, QString* error) {
    QString program = QStandardPaths::findExecutable(QStringLiteral("nats-server"));
    if (program.isEmpty())  // where Debian has it, which is in the path of administrators only
        program =
            QStandardPaths::findExecutable(QStringLiteral("nats-server"), {QStringLiteral("/usr/sbin")});
    m_nodes[node] = std::make_unique<ChildProgram>();
    m_nodes[node]->SetDirectory(QDir(m_folder).filePath(NameOf(node)));
    m_nodes[node]->SendErrorsTo(QDir(m_folder).filePath(NameOf(node) + QStringLiteral(".log")));
    const bool isStarted = !program.isEmpty() &&
                           m_nodes[node]->Start(program, {QStringLiteral("-c"), QStringLiteral("nats.conf")});
    const auto isThere = [&] { return !m_nodes[node]->IsRunning() || Listens(m_ports[node]); };
    if (isStarted && eventwait::Until(isThere, ClusterPatience, ClusterLookInterval) &&
        m_nodes[node]->IsRunning())
        return true;
    QFile log(QDir(m_folder).filePath(NameOf(node) + QStringLiteral(".log")));
    const bool hasSaid = log.open(QIODevice::ReadOnly) && log.size() > 0;
    const QString said = hasSaid ? QString::fromUtf8(log.readAll().trimmed().split('\n').last())
                                 : QStringLiteral("it is Debian's package nats-server");
    *error = QStringLiteral("nats-server does not start: ") + said;
    return false;
}

void DemoCluster::KillFirstNode() {
    m_nodes.front()->Kill();
}

void DemoCluster::Stop() {
    for (const auto& node : m_nodes)
        if (node != nullptr) node->Terminate(ClusterStopTime);
}

QString DemoCluster::Hosts() const {
    QStringList hosts;
    for (const int port : m_ports)
        hosts << QStringLiteral("127.0.0.1:%1").arg(port);
    return hosts.join(QLatin1Char(','));
}

QString DemoCluster::FirstNode() const {
    return NameOf(0);
}

QProcessEnvironment DemoCluster::EnvironmentOf(const QString& user) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QFile file(QDir(m_folder).filePath(user + QStringLiteral(".env")));
    if (!file.open(QIODevice::ReadOnly)) return environment;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const int equals = line.indexOf('=');
        if (equals > 0)
            environment.insert(QString::fromUtf8(line.left(equals)), QString::fromUtf8(line.mid(equals + 1)));
    }
    return environment;
}
