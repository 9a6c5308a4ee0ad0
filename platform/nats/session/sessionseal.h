// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/session/packet.h>

#include <QtCore/QByteArray>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace nats {

/// Keeps what a session says from all but its two ends, whatever NATS lets others read and publish: the ends
/// agree on keys that nobody else knows (X25519), one for each direction, and seal each packet by it
/// (AES-256-GCM), its head included. Who the other end is, this does not prove: that is for credentials.
class SessionSeal {
  public:
    enum class ESide { Client, Server };
    static constexpr int KeySize = 32;
    static constexpr int TagSize = 16;

    /// Draws a key of its own.
    SessionSeal();
    ~SessionSeal();
    SessionSeal(const SessionSeal&) = delete;
    SessionSeal& operator=(const SessionSeal&) = delete;

    /// What the other end is to be told; empty if the system has no such cipher.
    QByteArray PublicKey() const;
    /// With what the other end has told. \a place, the session's, has to be the same at both. False for what
    /// is no key.
    bool Agree(ESide side, std::string_view peerKey, const QByteArray& place);
    /// \a packet as it is to be sent. No two of one kind have the same number. Valid until the next call;
    /// empty if that fails.
    std::string_view Seal(const Packet& packet);
    /// What is in \a packet, which came so; none if the other end has not sealed it. Valid until the next
    /// call.
    std::optional<std::string_view> Open(const Packet& packet);

  private:
    struct Works;

    const std::unique_ptr<Works> m_works;
    std::string m_sealed;
    std::string m_opened;
};

}  // namespace nats
