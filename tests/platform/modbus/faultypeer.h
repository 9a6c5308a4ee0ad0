// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QThread>

#include <functional>
#include <mutex>

/// A Modbus/TCP peer on a thread of its own that does with each question whatever the test says.
class FaultyPeer {
  public:
    enum class EAfter { Keep, Close, Reset };
    struct Action {
        QByteArray bytes;             ///< to send
        EAfter after = EAfter::Keep;  ///< what then becomes of the connection
        int intervalMs = 0;           ///< above 0: one byte each, the first after that time
    };
    /// Called on the peer's thread with each question: 12 bytes, and the how many-th it is, from 1.
    using Answerer = std::function<Action(const QByteArray& question, int number)>;

    explicit FaultyPeer(Answerer answerer);
    ~FaultyPeer();
    FaultyPeer(const FaultyPeer&) = delete;
    FaultyPeer& operator=(const FaultyPeer&) = delete;

    quint16 Port() const { return m_port; }
    int Connections() const;
    /// How many questions came, and the last one.
    int Questions() const;
    QByteArray LastQuestion() const;
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

    Action Ask(const QByteArray& question);
    /// Runs \a task on the thread, and waits until that is done.
    void Run(const std::function<void()>& task);

    const Answerer m_answerer;
    mutable std::mutex m_mutex;  ///< guards what follows
    std::function<void()> m_task;
    int m_connections = 0;
    int m_questions = 0;
    QByteArray m_lastQuestion;
    QByteArray m_greeting;
    QThread m_thread;
    Server* m_server = nullptr;  ///< lives on the thread
    quint16 m_port = 0;
};
