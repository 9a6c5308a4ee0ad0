// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/iroads.h>

#include <platform/vtclient/wire/roadseal.h>

namespace vt {

IRoads::IListener::~IListener() = default;
IRoads::~IRoads() = default;

std::optional<quint64> NumberOnRoad(const char* data, qint64 size) {
    const std::optional<RoadEnvelope> envelope = RoadEnvelope::Of(data, size);
    return envelope ? std::optional(envelope->number) : std::nullopt;
}

}  // namespace vt
