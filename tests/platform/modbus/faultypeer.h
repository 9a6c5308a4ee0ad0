// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QThread>

#include <atomic>
#include <functional>

/// A Modbus/TCP peer on a thread of its own that does with each question whatever the test says.
class FaultyPeer {
  public:
    enum class EAfter { Keep, Close, Reset };
    struct Action {
        QByteArray bytes;             ///< to send
        EAfter after = EAfter::Keep;  ///< what then becomes of the connection
        int intervalMs = 0;           ///< above 0: one byte each, the first after that time
    };
    /// Called on the peer's thread with each question: 12 bytes.
    using Answerer = std::function<Action(const QByteArray& question)>;

    explicit FaultyPeer(Answerer answerer);
    ~FaultyPeer();
    FaultyPeer(const FaultyPeer&) = delete;
    FaultyPeer& operator=(const FaultyPeer&) = delete;

    quint16 Port() const { return m_port; }
    int Connections() const { return m_connections; }
    /// What is sent to each connection before any question.
    void SetGreeting(const QByteArray& greeting) { m_greeting = greeting; }
    /// Ends all connections, and returns once their ends are under way.
    void DropConnections();
    /// Sends \a bytes to all connections without having been asked.
    void Send(const QByteArray& bytes);

    /// The answer to \a question that has input i in bit i of \a bits.
    static QByteArray Answer(const QByteArray& question, unsigned bits);
    static QByteArray Exception(const QByteArray& question, int number);
    /// The number of inputs that \a question asks for.
    static int Count(const QByteArray& question);

  private:
    class Server;

    const Answerer m_answerer;
    QByteArray m_greeting;
    std::atomic<int> m_connections{0};
    QThread m_thread;
    Server* m_server = nullptr;  ///< lives on the thread
    quint16 m_port = 0;
};
