// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/fault.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>

class QTcpSocket;

namespace dimodule {

class Module;

/// Somebody who asks a module, one question after the other. Deletes itself when the connection ends.
class ModuleConnection final : public QObject {
    Q_OBJECT

  public:
    /// Takes \a socket over, and is owned by \a module.
    ModuleConnection(Module& module, QTcpSocket& socket);

    void Reset();
    /// From the next question on, ends the connection once no other came for \a time; 0: not any more.
    void SetIdleTime(std::chrono::milliseconds time);
    /// The same, and counts from now on also where nothing was asked yet.
    void DropWhenIdle(std::chrono::milliseconds time);

  private:
    void OnReadyRead();
    void AnswerFrames();
    void Perform();
    void Leave();

    Module& m_module;
    QTcpSocket& m_socket;
    QByteArray m_received;
    Reaction m_reaction;  ///< under way while m_delay runs
    bool m_isAnswering = false;
    QTimer m_delay;
    QTimer m_idle;
};

}  // namespace dimodule
