// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsscheme.h>

#include <platform/config/cfgcenter.h>
#include <platform/nats/natsaddress.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/session/natsconnector.h>
#include <platform/vtclient/vtclientcenter.h>

namespace nats {

namespace {

NatsOptions OptionsOf(const VtClientOptions& client, const NatsAddress& address) {
    NatsOptions options;
    options.servers = address.servers;
    options.name = CfgCenter::GetAppName();
    options.caFile = client.caFile;
    options.certificateFile = client.certificateFile;
    options.privateKeyFile = client.privateKeyFile;
    options.TakeEnvironment();
    return options;
}

std::unique_ptr<vt::IConnector> MakeConnector(const QString& host, int port, const VtClientOptions& client,
                                              QString* problem) {
    NatsAddress address;
    *problem = address.Parse(host, port);
    if (problem->isEmpty() && address.station.isEmpty())
        *problem = QStringLiteral("it names no station: nats://HOST/STATION");
    if (!problem->isEmpty()) return nullptr;
    const NatsOptions options = OptionsOf(client, address);
    if (MakeBus(options, problem) == nullptr) return nullptr;
    return std::make_unique<NatsConnector>([options](QString* fault) { return MakeBus(options, fault); },
                                           address.station, options.Who());
}

}  // namespace

void RegisterScheme() {
    VtClientCenter::Instance().RegisterScheme(QStringLiteral("nats"), MakeConnector,
                                              VtClientCenter::EAddress::Own);
}

}  // namespace nats
