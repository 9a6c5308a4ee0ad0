// SPDX-License-Identifier: Apache-2.0
#include "natsbroker.h"

#include <QtCore/QStandardPaths>

namespace bench {

namespace {

constexpr std::chrono::seconds NatsPatience(5);

}  // namespace

NatsBroker::~NatsBroker() {
    m_process.Terminate(NatsPatience);
}

bool NatsBroker::Start() {
    const QString name = QStringLiteral("nats-server");
    QString executable = QStandardPaths::findExecutable(name);
    if (executable.isEmpty())  // not in the search path of every user
        executable = QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")});
    const QStringList arguments{QStringLiteral("-a"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                                QStringLiteral("-1")};
    if (executable.isEmpty() || !m_process.Start(executable, arguments)) return false;
    const QString words = QStringLiteral("Listening for client connections on ");
    const auto isPort = [&words](const QString& line) { return line.contains(words); };
    const QString line = m_process.WaitForLine(isPort, NatsPatience);
    m_port = line.mid(line.lastIndexOf(QLatin1Char(':')) + 1).toInt();
    const auto isReady = [](const QString& text) { return text.contains(QLatin1String("Server is ready")); };
    return m_port != 0 && !m_process.WaitForLine(isReady, NatsPatience).isNull();
}

}  // namespace bench
