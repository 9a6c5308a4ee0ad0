// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/iconnector.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QObject>

class QTcpSocket;

namespace vt {

/// Connects over TCP, or TLS over TCP.
class SocketConnector final : public QObject, public IConnector {
    Q_OBJECT

  public:
    SocketConnector(QString host, int port, bool isTls, VtClientOptions options);
    ~SocketConnector() override;

    void SetListener(IConnector::IListener* listener) override { m_listener = listener; }
    void Connect() override;
    void Abort() override;

  private:
    QTcpSocket* MakeTlsSocket(QString* error);
    bool IsWhoWasAskedFor() const;
    void OnReady();
    void OnError();
    QString ErrorText() const;

    QString m_host;
    int m_port;
    bool m_isTls;
    VtClientOptions m_options;
    IConnector::IListener* m_listener = nullptr;
    QTcpSocket* m_socket = nullptr;  ///< of the attempt under way
};

}  // namespace vt
