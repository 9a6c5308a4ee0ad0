// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/modbus/faultypeer.h>

#include <apps/dimodule/modulesocket.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <future>
#include <utility>

namespace {

constexpr int QuestionSize = 12;

void Leave(QTcpSocket& socket, FaultyPeer::EAfter after) {
    if (after == FaultyPeer::EAfter::Keep) return;
    if (after == FaultyPeer::EAfter::Close) return socket.disconnectFromHost();
    dimodule::ResetOnClose(socket.socketDescriptor());
    socket.abort();
}

void Drip(QTcpSocket& socket, const FaultyPeer::Action& action) {
    auto* const timer = new QTimer(&socket);
    QObject::connect(timer, &QTimer::timeout, &socket, [&socket, timer, action, sent = 0]() mutable {
        socket.write(action.bytes.mid(sent++, 1));
        socket.flush();
        if (sent < action.bytes.size()) return;
        timer->deleteLater();
        Leave(socket, action.after);
    });
    timer->setTimerType(Qt::PreciseTimer);
    timer->start(action.intervalMs);
}

void Perform(QTcpSocket& socket, const FaultyPeer::Action& action) {
    if (action.intervalMs > 0) return Drip(socket, action);
    socket.write(action.bytes);
    socket.flush();
    Leave(socket, action.after);
}

}  // namespace

class FaultyPeer::Server final : public QTcpServer {
  public:
    explicit Server(FaultyPeer& peer) : m_peer(peer) { listen(QHostAddress::LocalHost); }

    QList<QTcpSocket*> Sockets() const { return findChildren<QTcpSocket*>(); }

  protected:
    void incomingConnection(qintptr descriptor) override {
        auto* const socket = new QTcpSocket(this);
        socket->setSocketDescriptor(descriptor);
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { OnReadyRead(*socket); });
        socket->write(m_peer.m_greeting);
        socket->flush();
        const std::lock_guard<std::mutex> lock(m_peer.m_mutex);
        ++m_peer.m_connections;
    }

    void customEvent(QEvent*) override {
        std::unique_lock<std::mutex> lock(m_peer.m_mutex);
        const std::function<void()> task = std::exchange(m_peer.m_task, nullptr);
        lock.unlock();
        task();
    }

  private:
    void OnReadyRead(QTcpSocket& socket) {
        while (socket.bytesAvailable() >= QuestionSize)
            Perform(socket, m_peer.Ask(socket.read(QuestionSize)));
    }

    FaultyPeer& m_peer;
};

FaultyPeer::FaultyPeer(Answerer answerer) : m_answerer(std::move(answerer)) {
    m_server = new Server(*this);
    m_port = m_server->serverPort();
    m_server->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_server, &QObject::deleteLater);
    m_thread.start();
    // What a thread opens for its event loop is there, also for tests that leave nothing to be opened.
    Run([] {});
}

FaultyPeer::~FaultyPeer() {
    m_thread.quit();
    m_thread.wait();
    // Qt's own waiting is nothing that the thread sanitizer could see.
    const std::lock_guard<std::mutex> lock(m_mutex);
}

FaultyPeer::Action FaultyPeer::Ask(const QByteArray& question) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lastQuestion = question;
    return m_answerer(question, ++m_questions);
}

int FaultyPeer::Questions() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_questions;
}

QByteArray FaultyPeer::LastQuestion() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_lastQuestion;
}

int FaultyPeer::Connections() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_connections;
}

void FaultyPeer::Run(const std::function<void()>& task) {
    std::promise<void> done;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_task = [&] {
            task();
            done.set_value();
        };
    }
    QCoreApplication::postEvent(m_server, new QEvent(QEvent::User));
    done.get_future().wait();
}

void FaultyPeer::DropConnections() {
    Run([this] {
        for (QTcpSocket* const socket : m_server->Sockets())
            socket->abort();
    });
}

void FaultyPeer::Send(const QByteArray& bytes) {
    Run([this, &bytes] {
        for (QTcpSocket* const socket : m_server->Sockets()) {
            socket->write(bytes);
            socket->flush();
        }
    });
}

QByteArray FaultyPeer::Answer(const QByteArray& question, unsigned bits) {
    const int byteCount = (Count(question) + 7) / 8;
    QByteArray answer = question.left(8);
    answer[5] = static_cast<char>(3 + byteCount);
    answer += static_cast<char>(byteCount);
    for (int i = 0; i < byteCount; ++i)
        answer += static_cast<char>(bits >> (8 * i) & 0xFF);
    return answer;
}

QByteArray FaultyPeer::Exception(const QByteArray& question, int number) {
    QByteArray answer = question.left(8);
    answer[5] = 3;
    answer[7] = static_cast<char>(answer[7] | 0x80);
    return answer + static_cast<char>(number);
}

int FaultyPeer::Count(const QByteArray& question) {
    return static_cast<quint8>(question[10]) << 8 | static_cast<quint8>(question[11]);
}
