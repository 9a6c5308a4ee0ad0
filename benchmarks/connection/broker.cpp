// SPDX-License-Identifier: Apache-2.0
#include "broker.h"

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>
#include <QtNetwork/QTcpServer>

namespace bench {

namespace {

constexpr std::chrono::seconds LongestWait(5);

int FreePort() {
    QTcpServer server;
    return server.listen(QHostAddress(QHostAddress::LocalHost), 0) ? server.serverPort() : 0;
}

QString Executable() {
    const QString name = QStringLiteral("mosquitto");
    const QString found = QStandardPaths::findExecutable(name);
    // Not in the search path of every user.
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")}) : found;
}

}  // namespace

Broker::~Broker() {
    m_process.Terminate(LongestWait);
}

bool Broker::Start() {
    const QString executable = Executable();
    const QString configuration = m_directory.filePath(QStringLiteral("broker.conf"));
    m_port = FreePort();
    if (executable.isEmpty() || m_port == 0 || !WriteConfiguration(configuration)) return false;
    if (!m_process.Start(executable, {QStringLiteral("-c"), configuration})) return false;
    const auto isRunning = [](const QString& line) { return line.contains(QLatin1String(" running")); };
    return !m_process.WaitForLine(isRunning, LongestWait).isNull();
}

// Without a bound on queues: the flow control of the application keeps them short, and nothing may be lost.
bool Broker::WriteConfiguration(const QString& file) const {
    QFile configuration(file);
    if (!configuration.open(QIODevice::WriteOnly)) return false;
    configuration.write("listener " + QByteArray::number(m_port) +
                        " 127.0.0.1\n"
                        "allow_anonymous true\n"
                        "persistence false\n"
                        "set_tcp_nodelay true\n"
                        "max_queued_messages 0\n"
                        "log_dest stderr\n"
                        "log_type error\n"
                        "log_type information\n"
                        "connection_messages false\n");
    return true;
}

}  // namespace bench
