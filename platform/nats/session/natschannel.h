// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/roads/natsroads.h>
#include <platform/nats/session/natssession.h>
#include <platform/vtclient/ichannel.h>

#include <memory>

namespace nats {

/// A session as a channel. The session outlives it where words are left to be sent.
class NatsChannel final : public vt::IChannel {
  public:
    /// Who the peer is, and what is known of the way there.
    struct Peer {
        QString address;
        bool isLoopback = false;
        bool isEncrypted = false;
    };

    /// \a roads are those of the peer, if it has any.
    NatsChannel(std::shared_ptr<NatsSession> session, Peer peer, std::unique_ptr<NatsRoads> roads = nullptr)
        : m_session(std::move(session)), m_peer(std::move(peer)), m_roads(std::move(roads)) {}
    ~NatsChannel() override {
        m_session->SetListener(nullptr);
        m_session->Close();
    }

    void SetListener(vt::IChannelListener* listener) override { m_session->SetListener(listener); }
    void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) override {
        m_session->Append(head, {shared.constData(), static_cast<std::size_t>(shared.size())}, tail);
    }
    void Flush() override { m_session->Flush(); }
    qint64 Unsent() const override { return m_session->Unsent(); }
    qint64 Unfinished() const override { return m_session->Unfinished(); }
    void GiveBackRoom() override { m_session->GiveBackRoom(); }
    bool IsOpen() const override { return m_session->IsOpen(); }
    void Close() override { m_session->Close(); }
    void SetMaxMessage(quint32 size) override { m_session->SetMaxMessage(size); }
    QString PeerAddress() const override { return m_peer.address; }
    bool IsLoopback() const override { return m_peer.isLoopback; }
    bool IsEncrypted() const override { return m_peer.isEncrypted; }
    QString CertificateName() const override { return QString(); }
    vt::IRoads* Roads() override { return m_roads.get(); }

  private:
    const std::shared_ptr<NatsSession> m_session;
    const Peer m_peer;
    const std::unique_ptr<NatsRoads> m_roads;
};

}  // namespace nats
