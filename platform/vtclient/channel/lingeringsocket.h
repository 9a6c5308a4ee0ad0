// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

#include <deque>
#include <memory>

class QSslSocket;
class QTcpSocket;

namespace vt {

/// What is left of a connection that was closed at this end: sends what the socket still holds, tells the
/// peer that no more comes, and reads on, for nobody, until the peer has closed too. A socket that is closed
/// while something is unread resets the connection, and the peer loses what it has not read by then: the
/// reason why, of all things. What only encryption needs goes as soon as nothing is left to be sent. There
/// are only so many at a time: the one that has been there longest, and has told its peer long ago, makes
/// room. Main thread.
class LingeringSocket final : public QObject {
    Q_OBJECT

  public:
    /// Takes over \a socket, whose signals may be what led here. It goes by itself, but not while one of the
    /// \a callsUnderWay is: whoever was told may have opened a dialog, and closed the connection there.
    static void TakeOver(QTcpSocket* socket, std::shared_ptr<const int> callsUnderWay);
    ~LingeringSocket() override;

  private:
    LingeringSocket(QTcpSocket* socket, std::shared_ptr<const int> callsUnderWay);

    static bool MakeRoom(qint64 unsent);
    void Linger();
    void StopLingering();
    void OnReadyRead();
    void EndSendingOnceSent();
    void LetGoOfEncryption();
    void End();

    static std::deque<LingeringSocket*> s_all;  ///< that linger, the longest first
    static qint64 s_bytes;                      ///< that these had to send when they began to

    QTcpSocket* m_socket;
    QSslSocket* m_ssl;  ///< the same, if it is one
    std::shared_ptr<const int> m_callsUnderWay;
    qint64 m_bytes = 0;  ///< of s_bytes
    bool m_hasEnded = false;
};

}  // namespace vt
