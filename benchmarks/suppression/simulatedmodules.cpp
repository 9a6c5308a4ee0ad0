// SPDX-License-Identifier: Apache-2.0
#include "simulatedmodules.h"

#include "plant.h"

#include <QtCore/QElapsedTimer>
#include <QtNetwork/QTcpServer>

namespace bench {

namespace {

/// Each module would choose another one by itself.
quint16 FreePort() {
    QTcpServer server;
    server.listen(QHostAddress(plant::AddressOf(0)), 0);
    return server.serverPort();
}

}  // namespace

SimulatedModules::SimulatedModules() {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // What it says of each command would only pile up.
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] {
        if (m_port != 0) m_process.readAllStandardOutput();
    });
}

SimulatedModules::~SimulatedModules() {
    m_process.kill();
    m_process.waitForFinished();
}

// Somebody else may have taken the port at one of the addresses.
bool SimulatedModules::Start() {
    constexpr int Attempts = 5;
    for (int i = 0; i < Attempts; ++i)
        if (StartAt(FreePort())) return true;
    return false;
}

bool SimulatedModules::StartAt(quint16 port) {
    m_process.start(QStringLiteral(DIMODULE),
                    {QStringLiteral("--modules"), QString::number(plant::Modules), QStringLiteral("--listen"),
                     QStringLiteral("%1:%2").arg(plant::AddressOf(0)).arg(port)});
    if (!WaitUntilAllListen()) {
        m_process.kill();
        m_process.waitForFinished();
        return false;
    }
    m_port = port;
    return true;
}

bool SimulatedModules::WaitUntilAllListen() {
    QByteArray said;
    QElapsedTimer time;
    time.start();
    while (said.count("listening on ") < plant::Modules) {
        const int left = plant::Patience - static_cast<int>(time.elapsed());
        if (left <= 0 || !m_process.waitForReadyRead(left)) return false;
        said += m_process.readAllStandardOutput();
    }
    return true;
}

void SimulatedModules::Key(int module, bool isKeyed) {
    m_process.write(QByteArray(isKeyed ? "key " : "release ") + QByteArray::number(module + 1) + '/' +
                    QByteArray::number(plant::InputOf(module)) + '\n');
    while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten(plant::Patience)) {
    }
}

}  // namespace bench
