// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/session/natsconnector.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/iconnector.h>
#include <platform/vtclient/wire/messagetypes.h>

#include <QtCore/QCborArray>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace bench {

/// A session with the benchmark's server over NATS in which everything is said that the protocol wants, with
/// keys, acknowledgements and pings, and nothing is kept of what is heard.
class LightSession final : private vt::IConnector::IListener, private vt::IChannelListener {
  public:
    struct Handlers {
        std::function<void()> onWelcome;
        std::function<void(LightSession& session, const QString& road)> onRoad;
        std::function<void()> onTaken;  ///< it is told by the road from now on
    };

    /// With a \a reportPath it writes there what Report() says.
    LightSession(std::shared_ptr<nats::INatsBus> bus, const QString& station, Handlers handlers,
                 QString reportPath);
    ~LightSession() override;

    void Open() { m_connector.Connect(); }
    /// Something has come by the road.
    void TellHeard(const QString& road);
    void Report(int number);

  private:
    void OnConnected(std::unique_ptr<vt::IChannel> channel) override;
    void OnConnectFailed(const QString& reason) override;
    void OnMessage(const char* data, qint64 size) override;
    void OnInputDone() override;
    void OnClosed(const QString& reason) override;
    void OnWelcome(const QCborArray& welcome);
    void Send(vt::EMessage type, QCborArray content);
    void SendPing();

    nats::NatsConnector m_connector;
    const Handlers m_handlers;
    const QString m_reportPath;
    std::unique_ptr<vt::IChannel> m_channel;
    QTimer m_ping;
    qint64 m_pings = 0;
    qint64 m_toAcknowledge = 0;  ///< messages, as are the next
    qint64 m_acknowledged = 0;
    qint64 m_requests = 0;
};

}  // namespace bench
