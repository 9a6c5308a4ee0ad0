// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <atomic>
#include <thread>

class IModbusTcpInterface;

/// Reads the inputs of one data module once, over a connection of its own and on a thread of its own, so that
/// whoever asks goes on meanwhile. One at a time; belongs to the main thread.
class ConnectionTest : public QObject {
    Q_OBJECT

  public:
    explicit ConnectionTest(QObject* parent = nullptr);
    /// Ends a test under way.
    ~ConnectionTest() override;

    bool IsRunning() const { return m_isRunning; }
    /// Tests the module at the IP address \a address. False if another test is under way.
    bool Start(const QString& address, int inputs);

  Q_SIGNALS:
    /// The module answered: bit i of \a bits is input i.
    void SignalAnswered(quint32 bits);
    /// It did not, as \a reason says in one line.
    void SignalFailed(const QString& reason);

  private:
    void Run(const QString& address, int inputs);
    void Join();

    std::thread m_thread;
    std::atomic<bool> m_isAborted{false};
    bool m_isRunning = false;
};
