// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/session/natschannel.h>
#include <platform/nats/session/natssession.h>
#include <tests/platform/nats/memorybus.h>
#include <tests/platform/vtclient/recordinglistener.h>
#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

inline std::string_view View(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// A frame of \a text.
inline QByteArray Frame(const QByteArray& text) {
    QByteArray frame("\0\0\0", 3);
    frame += static_cast<char>(text.size());
    return frame + text;
}

/// One session with a test in place of the other end.
class OneSession : public testing::Test {
  protected:
    OneSession() {
        m_channel.SetListener(&m_listener);
        m_bus->Open(true);
        RunTurns(2);  // it looks whether something came before there was a listener
    }
    /// As the other end would send it.
    void Give(nats::Packet::EKind kind, quint64 number, quint64 consumed = 0, const QByteArray& body = {}) {
        m_session->OnPacket(*nats::Packet::Read(m_peer->Seal({kind, number, consumed, View(body)})));
    }
    void GiveData(quint64 number, const QByteArray& text) {
        Give(nats::Packet::EKind::Data, number, 0, Frame(text));
    }
    void GivePosition(quint64 number, quint64 last, bool isQuestion = false) {
        Give(nats::Packet::EKind::Number, number, 0, nats::Position{last, isQuestion}.Write());
    }
    /// The last packet of that kind that the session has sent; none if there is none.
    std::optional<nats::Packet> Sent(nats::Packet::EKind kind) const {
        std::optional<nats::Packet> found;
        for (const MemoryBus::Published& published : m_bus->published) {
            const std::optional<nats::Packet> packet = nats::Packet::Read(View(published.data));
            if (!packet || packet->kind != kind) continue;
            EXPECT_TRUE(m_peer->Open(*packet));
            found = packet;
        }
        return found;
    }

    std::shared_ptr<nats::NatsSession> MakeSession() {
        auto own = std::make_unique<nats::SessionSeal>();
        m_peer = std::make_unique<nats::SessionSeal>();
        const QByteArray key = own->PublicKey();
        EXPECT_TRUE(own->Agree(nats::SessionSeal::ESide::Server, View(m_peer->PublicKey()), "here"));
        EXPECT_TRUE(m_peer->Agree(nats::SessionSeal::ESide::Client, View(key), "here"));
        return std::make_shared<nats::NatsSession>(
            m_bus, "down", nats::Greeting{nats::Packet::Version, 1000, 0, {}}, std::move(own));
    }

    const TraceRecorder m_traces;
    const std::shared_ptr<MemoryBus> m_bus = std::make_shared<MemoryBus>();
    std::unique_ptr<nats::SessionSeal> m_peer;
    const std::shared_ptr<nats::NatsSession> m_session = MakeSession();
    nats::NatsChannel m_channel{m_session, {QStringLiteral("nats/joe:1"), false, false}};
    RecordingListener m_listener;
};
