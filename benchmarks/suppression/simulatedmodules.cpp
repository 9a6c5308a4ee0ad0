// SPDX-License-Identifier: Apache-2.0
#include "simulatedmodules.h"

#include "plant.h"

#include <QtNetwork/QTcpServer>

namespace bench {

namespace {

constexpr std::chrono::milliseconds Patience(plant::Patience);

/// Each module would choose another one by itself.
quint16 FreePort() {
    QTcpServer server;
    server.listen(QHostAddress(plant::AddressOf(0)), 0);
    return server.serverPort();
}

}  // namespace

// Somebody else may have taken the port at one of the addresses.
bool SimulatedModules::Start() {
    constexpr int Attempts = 5;
    for (int i = 0; i < Attempts; ++i)
        if (StartAt(FreePort())) return true;
    return false;
}

bool SimulatedModules::StartAt(quint16 port) {
    m_process.Start(QStringLiteral(DIMODULE),
                    {QStringLiteral("--modules"), QString::number(plant::Modules), QStringLiteral("--listen"),
                     QStringLiteral("%1:%2").arg(plant::AddressOf(0)).arg(port)});
    for (int listening = 0; listening < plant::Modules; ++listening)
        if (m_process.WaitForLine(QStringLiteral("listening on "), Patience).isNull()) {
            m_process.Kill();
            return false;
        }
    m_process.DropOutput();  // what it says of each command would only pile up
    m_port = port;
    return true;
}

void SimulatedModules::Key(int module, bool isKeyed) {
    m_process.Say(QByteArray(isKeyed ? "key " : "release ") + QByteArray::number(module + 1) + '/' +
                  QByteArray::number(plant::InputOf(module)));
    m_process.Flush(Patience);
}

}  // namespace bench
