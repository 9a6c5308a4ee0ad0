// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/fault.h>
#include <apps/dimodule/inputs.h>

#include <QtCore/QObject>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>

#include <chrono>
#include <random>

namespace dimodule {

/// One module: listens, answers, and has one fault at a time. Belongs to the thread that made it.
class Module final : public QObject {
    Q_OBJECT

  public:
    static constexpr int MaxConnections = 100;

    explicit Module(const Inputs& inputs = Inputs(), unsigned seed = 0);
    ~Module() override;

    /// Takes connections at \a port, or at a free one if that is 0. False with the reason in \a error.
    bool Listen(const QHostAddress& address, quint16 port, QString* error);
    /// "ADDRESS:PORT", the real port.
    QString Where() const;
    quint16 Port() const { return m_port; }

    const Inputs& GetInputs() const { return m_inputs; }
    /// Bits beyond the last input do not count.
    void SetStates(quint32 states);
    const Fault& GetFault() const { return m_fault; }
    void SetFault(const Fault& fault);

    int Connections() const;
    qint64 Questions() const { return m_questions; }

    /// What to do about the question \a frame, a whole frame: what the fault makes of the right answer.
    Reaction Ask(const QByteArray& frame);

  Q_SIGNALS:
    /// The fault was for a number of questions, and these have come.
    void FaultOver();
    /// There was no way to listen again after connections were refused.
    void Failed(const QString& error);

  private:
    void OnNewConnection();
    void Relisten();
    std::chrono::milliseconds IdleTime() const;

    Inputs m_inputs;
    Fault m_fault;
    std::mt19937 m_random;
    QTcpServer m_server;
    QHostAddress m_address;
    quint16 m_port = 0;
    qint64 m_questions = 0;
};

}  // namespace dimodule
