// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QByteArray>

#include <deque>
#include <functional>
#include <memory>

/// Two channels back to back in memory. Nothing moves by itself: Deliver() hands over what was flushed.
class MemoryChannel final : public vt::IChannel {
  public:
    struct Wire {
        std::deque<QByteArray> toA, toB;
        bool isOpen = true;
        bool isAGone = false, isBGone = false;  ///< the channel object of that end was destroyed
    };

    /// One end of \a wire; \a isA says which.
    MemoryChannel(std::shared_ptr<Wire> wire, bool isA) : m_wire(std::move(wire)), m_isA(isA) {}
    ~MemoryChannel() override {
        Close();
        (m_isA ? m_wire->isAGone : m_wire->isBGone) = true;
    }

    void SetListener(vt::IChannelListener* listener) override { m_listener = listener; }
    void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) override {
        if (!m_isOpen) return;
        QByteArray message(head.data(), static_cast<int>(head.size()));
        message += shared;
        message.append(tail.data(), static_cast<int>(tail.size()));
        m_queued.push_back(message);
    }
    void Flush() override {
        for (QByteArray& message : m_queued)
            Outgoing().push_back(std::move(message));
        m_queued.clear();
    }
    qint64 Unsent() const override {
        qint64 size = 0;
        for (const QByteArray& message : m_queued)
            size += message.size();
        for (const QByteArray& message : m_isA ? m_wire->toB : m_wire->toA)
            size += message.size();
        return size;
    }
    qint64 Unfinished() const override { return m_unfinished; }
    bool IsOpen() const override { return m_isOpen; }
    void Close() override {
        if (!m_isOpen) return;
        Flush();
        m_isOpen = m_wire->isOpen = false;
    }
    void SetMaxMessage(quint32 size) override { m_maxMessage = size; }
    QString PeerAddress() const override { return m_address; }
    bool IsLoopback() const override { return m_isLoopback; }
    bool IsEncrypted() const override { return m_isEncrypted; }
    QString CertificateName() const override { return m_certificateName; }
    vt::IRoads* Roads() override { return m_roads; }

    /// What is said to have begun to come.
    void SetUnfinished(qint64 size) { m_unfinished = size; }
    void SetRoads(vt::IRoads* roads) { m_roads = roads; }
    void SetAddress(const QString& address) { m_address = address; }
    void SetPeer(bool isLoopback, bool isEncrypted, const QString& certificateName) {
        m_isLoopback = isLoopback;
        m_isEncrypted = isEncrypted;
        m_certificateName = certificateName;
    }

    /// Hands over everything that has arrived, then the end of the wire. True if there was something.
    bool Deliver() {
        if (!m_isOpen || m_listener == nullptr) return false;
        std::deque<QByteArray>& incoming = m_isA ? m_wire->toA : m_wire->toB;
        const bool hasSome = !incoming.empty();
        while (!incoming.empty() && m_isOpen && m_listener != nullptr) {
            const QByteArray message = std::move(incoming.front());
            incoming.pop_front();
            if (static_cast<quint32>(message.size()) > m_maxMessage) return Refuse(message.size());
            m_listener->OnMessage(message.constData(), message.size());
        }
        if (m_listener == nullptr) return hasSome;
        if (m_isOpen && !m_wire->isOpen) {
            m_isOpen = false;
            m_listener->OnClosed(QStringLiteral("the wire was cut"));
            return true;
        }
        if (hasSome && m_listener != nullptr) m_listener->OnInputDone();
        return hasSome;
    }

  private:
    /// The peer may be told why.
    bool Refuse(int size) {
        const auto wire = m_wire;
        const bool& isGone = m_isA ? wire->isAGone : wire->isBGone;
        m_listener->OnClosed(
            QStringLiteral("a message of %1 bytes, where %2 are allowed").arg(size).arg(m_maxMessage));
        if (!isGone) Close();
        return true;
    }
    std::deque<QByteArray>& Outgoing() { return m_isA ? m_wire->toB : m_wire->toA; }

    std::shared_ptr<Wire> m_wire;
    bool m_isA;
    vt::IChannelListener* m_listener = nullptr;
    std::deque<QByteArray> m_queued;
    bool m_isOpen = true;
    quint32 m_maxMessage = vtlimits::MaxFrame;  ///< tests that speak by hand take anything
    qint64 m_unfinished = 0;
    QString m_address = QStringLiteral("memory");
    bool m_isLoopback = true;
    bool m_isEncrypted = false;
    QString m_certificateName;
    vt::IRoads* m_roads = nullptr;
};
