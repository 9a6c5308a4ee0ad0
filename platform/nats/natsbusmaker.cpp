// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsbusmaker.h>

#include <platform/nats/bus/cnatsoptions.h>
#include <platform/nats/bus/natsbus.h>

std::shared_ptr<nats::INatsBus> nats::MakeBus(const NatsOptions& options, QString* problem) {
    // What is wrong with the files is found out now, and told once.
    HostPort none{QStringLiteral("localhost"), NatsOptions::DefaultPort};
    const HostPort& server = options.servers.empty() ? none : options.servers.front();
    if (MakeCnatsOptions(options, server, problem) == nullptr) return nullptr;
    return std::make_shared<NatsBus>(options);
}

bool nats::IsBuiltIn() {
    return true;
}
