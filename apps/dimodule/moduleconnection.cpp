// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/moduleconnection.h>

#include <apps/dimodule/answer.h>
#include <apps/dimodule/module.h>
#include <apps/dimodule/modulesocket.h>

#include <QtCore/QScopedValueRollback>
#include <QtNetwork/QTcpSocket>

namespace dimodule {

namespace {

constexpr int MaxWaiting = 16 * MaxFrameSize;  // questions that nobody has looked at, and answers unread

}  // namespace

ModuleConnection::ModuleConnection(Module& module, QTcpSocket& socket)
    : QObject(&module), m_module(module), m_socket(socket) {
    m_socket.setParent(this);
    m_socket.setReadBufferSize(MaxWaiting);
    HoldUnsent(m_socket.socketDescriptor(), MaxWaiting);
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_delay.setSingleShot(true);
    m_delay.setTimerType(Qt::PreciseTimer);
    m_idle.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &ModuleConnection::Perform);
    connect(&m_idle, &QTimer::timeout, this, &ModuleConnection::Leave);
    connect(&m_socket, &QTcpSocket::readyRead, this, &ModuleConnection::OnReadyRead);
    connect(&m_socket, &QTcpSocket::bytesWritten, this, &ModuleConnection::OnReadyRead);
    connect(&m_socket, &QTcpSocket::disconnected, &m_delay, &QTimer::stop);
    connect(&m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    // The peer may have gone, or asked, before the signals above were connected.
    if (m_socket.state() != QAbstractSocket::ConnectedState) deleteLater();
    if (m_socket.bytesAvailable() > 0)
        QMetaObject::invokeMethod(this, &ModuleConnection::OnReadyRead, Qt::QueuedConnection);
}

void ModuleConnection::Reset() {
    ResetOnClose(m_socket.socketDescriptor());
    m_socket.abort();
}

void ModuleConnection::SetIdleTime(std::chrono::milliseconds time) {
    m_idle.stop();
    m_idle.setInterval(time);
}

void ModuleConnection::DropWhenIdle(std::chrono::milliseconds time) {
    SetIdleTime(time);
    if (time > time.zero()) m_idle.start();
}

void ModuleConnection::OnReadyRead() {
    // Sending an answer may emit bytesWritten() at once, which leads here again.
    if (!m_delay.isActive() && !m_isAnswering) AnswerFrames();
}

void ModuleConnection::AnswerFrames() {
    const QScopedValueRollback<bool> answering(m_isAnswering, true);
    while (!m_delay.isActive() && m_socket.state() == QAbstractSocket::ConnectedState) {
        const int size = FrameSize(m_received);
        if (size == 0) {
            if (m_socket.bytesAvailable() == 0) return;
            m_received += m_socket.read(MaxFrameSize);
            continue;
        }
        if (size == -1) return Leave();  // this is another protocol
        // Who does not read the answers gets no more of them until then.
        if (m_socket.bytesToWrite() > MaxWaiting) return;
        if (m_idle.interval() > 0) m_idle.start();
        m_reaction = m_module.Ask(m_received.left(size));
        m_received.remove(0, size);
        if (m_reaction.delay > m_reaction.delay.zero())
            m_delay.start(m_reaction.delay);
        else
            Perform();
    }
}

void ModuleConnection::Perform() {
    const Reaction reaction = m_reaction;
    m_socket.write(reaction.bytes);
    m_socket.flush();
    if (reaction.then == Reaction::EThen::Reset) return Reset();
    if (reaction.then == Reaction::EThen::Leave) return Leave();
    if (reaction.delay > reaction.delay.zero()) AnswerFrames();
}

void ModuleConnection::Leave() {
    m_socket.disconnectFromHost();
}

}  // namespace dimodule
