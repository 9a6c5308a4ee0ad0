// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/nats/natsserver.h>

#include <QtCore/QFile>

#include <chrono>
#include <csignal>

namespace {

constexpr std::chrono::seconds Patience(20);

}  // namespace

bool NatsServer::Start(const QByteArray& configuration) {
    const QString file = m_folder.filePath(QStringLiteral("nats.conf"));
    QFile conf(file);
    if (!conf.open(QIODevice::WriteOnly)) return false;
    conf.write(configuration);
    conf.close();
    const QStringList arguments{QStringLiteral("-a"),  QStringLiteral("127.0.0.1"),
                                QStringLiteral("-p"),  QString::number(m_port == 0 ? -1 : m_port),
                                QStringLiteral("-c"),  file,
                                QStringLiteral("-sd"), m_folder.filePath(QStringLiteral("store"))};
    if (!m_program.Start(QStringLiteral(NATS_SERVER), arguments)) return false;
    const QString words = QStringLiteral("Listening for client connections on ");
    const auto isPort = [&words](const QString& line) { return line.contains(words); };
    const QString line = m_program.WaitForLine(isPort, Patience);
    m_port = line.mid(line.lastIndexOf(QLatin1Char(':')) + 1).toInt();
    const auto isReady = [](const QString& text) { return text.contains(QLatin1String("Server is ready")); };
    return m_port != 0 && !m_program.WaitForLine(isReady, Patience).isNull();
}

void NatsServer::Reload(const QByteArray& configuration) const {
    QFile conf(m_folder.filePath(QStringLiteral("nats.conf")));
    if (conf.open(QIODevice::WriteOnly)) conf.write(configuration);
    conf.close();
    ::kill(static_cast<pid_t>(m_program.GetProcessId()), SIGHUP);
}

void NatsServer::Freeze(bool isFrozen) const {
    ::kill(static_cast<pid_t>(m_program.GetProcessId()), isFrozen ? SIGSTOP : SIGCONT);
}

nats::NatsOptions NatsServer::Options() const {
    nats::NatsOptions options;
    options.servers = {{QStringLiteral("127.0.0.1"), m_port}};
    options.firstRetry = std::chrono::milliseconds(1);
    options.longestRetry = std::chrono::milliseconds(50);
    return options;
}

QString NatsServer::Address(const QString& station) const {
    return QStringLiteral("nats://127.0.0.1:%1/%2").arg(m_port).arg(station);
}
