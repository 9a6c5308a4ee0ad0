// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/module.h>

#include <apps/dimodule/answer.h>
#include <apps/dimodule/moduleconnection.h>

#include <QtNetwork/QTcpSocket>

namespace dimodule {

Module::Module(const Inputs& inputs, unsigned seed) : m_inputs(inputs), m_random(seed) {
    m_inputs.states &= m_inputs.All();
    connect(&m_server, &QTcpServer::newConnection, this, &Module::OnNewConnection);
}

Module::~Module() = default;

bool Module::Listen(const QHostAddress& address, quint16 port, QString* error) {
    m_address = address;
    if (!m_server.listen(address, port)) {
        *error = QStringLiteral("cannot listen on %1:%2: %3")
                     .arg(address.toString())
                     .arg(port)
                     .arg(m_server.errorString());
        return false;
    }
    m_port = m_server.serverPort();
    return true;
}

QString Module::Where() const {
    return QStringLiteral("%1:%2").arg(m_address.toString()).arg(m_port);
}

void Module::SetStates(quint32 states) {
    m_inputs.states = states & m_inputs.All();
}

void Module::SetFault(const Fault& fault) {
    m_fault = fault;
    const bool isRefused = fault.kind == EFault::Refused;
    const auto connections = findChildren<ModuleConnection*>();
    for (ModuleConnection* const connection : connections)
        if (isRefused)
            connection->Reset();
        else
            connection->DropWhenIdle(IdleTime());
    if (isRefused)
        m_server.close();
    else
        Relisten();
}

std::chrono::milliseconds Module::IdleTime() const {
    return std::chrono::milliseconds(m_fault.kind == EFault::Idle ? m_fault.argument : 0);
}

void Module::Relisten() {
    if (m_port == 0 || m_server.isListening()) return;
    QString error;
    if (!Listen(m_address, m_port, &error)) Q_EMIT Failed(error);
}

int Module::Connections() const {
    return findChildren<ModuleConnection*>().size();
}

void Module::OnNewConnection() {
    while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
        if (Connections() >= MaxConnections) {
            socket->deleteLater();
            continue;
        }
        auto* const connection = new ModuleConnection(*this, *socket);
        // Whoever has just connected is about to ask, however short the time is and however busy the machine.
        connection->SetIdleTime(IdleTime());
    }
}

Reaction Module::Ask(const QByteArray& frame) {
    ++m_questions;
    const Reaction reaction = React(m_fault, frame, Answer(frame, m_inputs), m_random);
    if (m_fault.count != 0 && --m_fault.count == 0) {
        SetFault(Fault());
        Q_EMIT FaultOver();
    }
    return reaction;
}

}  // namespace dimodule
