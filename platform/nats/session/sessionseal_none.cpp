// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/sessionseal.h>

// Without NATS there are no sessions over it, and nothing that could seal them.
namespace nats {

struct SessionSeal::Works {};

SessionSeal::SessionSeal() = default;
SessionSeal::~SessionSeal() = default;

QByteArray SessionSeal::PublicKey() const {
    return QByteArray();
}

bool SessionSeal::Agree(ESide /*side*/, std::string_view /*peerKey*/, const QByteArray& /*place*/) {
    return false;
}

std::string_view SessionSeal::Seal(const Packet& /*packet*/) {
    return {};
}

std::optional<std::string_view> SessionSeal::Open(const Packet& /*packet*/) {
    return std::nullopt;
}

}  // namespace nats
