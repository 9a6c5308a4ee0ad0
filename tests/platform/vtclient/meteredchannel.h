// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ichannel.h>

#include <algorithm>
#include <memory>

/// A channel that passes everything on to another one and notes how much was unsent at most.
class MeteredChannel final : public vt::IChannel {
  public:
    MeteredChannel(std::unique_ptr<vt::IChannel> channel, qint64* mostUnsent)
        : m_channel(std::move(channel)), m_mostUnsent(mostUnsent) {}

    void SetListener(vt::IChannelListener* listener) override { m_channel->SetListener(listener); }
    void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) override {
        m_channel->SendInParts(head, shared, tail);
        Note();
    }
    void Flush() override {
        m_channel->Flush();
        Note();
    }
    qint64 Unsent() const override { return m_channel->Unsent(); }
    bool IsOpen() const override { return m_channel->IsOpen(); }
    void Close() override { m_channel->Close(); }
    void SetMaxMessage(quint32 size) override { m_channel->SetMaxMessage(size); }
    QString PeerAddress() const override { return m_channel->PeerAddress(); }
    bool IsLoopback() const override { return m_channel->IsLoopback(); }
    bool IsEncrypted() const override { return m_channel->IsEncrypted(); }
    QString CertificateName() const override { return m_channel->CertificateName(); }

  private:
    void Note() { *m_mostUnsent = std::max(*m_mostUnsent, m_channel->Unsent()); }

    std::unique_ptr<vt::IChannel> m_channel;
    qint64* m_mostUnsent;
};
