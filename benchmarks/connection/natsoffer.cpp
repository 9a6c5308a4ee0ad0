// SPDX-License-Identifier: Apache-2.0
#include "natsoffer.h"

#include "role.h"

#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/natsstation.h>

namespace bench {

std::shared_ptr<nats::NatsStation> OfferAtNats(VtServer& server, int port, std::function<void()> onOffering) {
    nats::NatsOptions options;
    options.servers = {{QStringLiteral("127.0.0.1"), port}};
    QString problem;
    const std::shared_ptr<nats::INatsBus> bus = nats::MakeBus(options, &problem);
    if (!bus) Role::Fail(problem);
    auto station = std::make_shared<nats::NatsStation>(
        server, bus, BenchStation(), nats::NatsStation::Description{QStringLiteral("bench"), QString(), {}},
        [onOffering = std::move(onOffering)](nats::NatsStation::EState state, const QString& reason) {
            if (state == nats::NatsStation::EState::Taken) Role::Fail(reason);
            if (state == nats::NatsStation::EState::Offering) onOffering();
        });
    bus->Open(true);
    station->Start();
    return station;
}

QByteArray StationAtNats(int port) {
    nats::RegisterScheme();
    return "nats://127.0.0.1:" + QByteArray::number(port) + '/' + BenchStation().toLatin1();
}

}  // namespace bench
