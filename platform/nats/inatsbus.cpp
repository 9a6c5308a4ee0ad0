// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/inatsbus.h>

// Said once more, where MinGW exports it.
constexpr decltype(nats::INatsBus::EnoughUnsent) nats::INatsBus::EnoughUnsent;

nats::INatsBus::~INatsBus() = default;
nats::INatsBus::IListener::~IListener() = default;
