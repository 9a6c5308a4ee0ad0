// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

class QSslSocket;
class QTcpSocket;

namespace vt {

/// What is left of a connection that was closed at this end: sends what the socket still holds, tells the
/// peer that no more comes, and reads on, for nobody, until the peer has closed too. A socket that is closed
/// while something is unread resets the connection, and the peer loses what it has not read by then: the
/// reason why, of all things. Main thread.
class LingeringSocket final : public QObject {
    Q_OBJECT

  public:
    /// Takes over \a socket, whose signals may be what led here. It goes by itself.
    static void TakeOver(QTcpSocket* socket);
    ~LingeringSocket() override;

  private:
    explicit LingeringSocket(QTcpSocket* socket);

    void OnReadyRead();
    void EndSendingOnceSent();

    static int s_count;

    QTcpSocket* m_socket;
    QSslSocket* m_ssl;  ///< the same, if it is one
    bool m_hasEnded = false;
};

}  // namespace vt
