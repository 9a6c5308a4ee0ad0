// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsscheme.h>

#include <platform/config/cfgcenter.h>
#include <platform/nats/natsaddress.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/session/natsconnector.h>
#include <platform/vtclient/vtclientcenter.h>

#include <algorithm>

namespace nats {

namespace {

std::unique_ptr<vt::IConnector> MakeConnector(const QString& host, int port, const VtClientOptions& client,
                                              bool isTls, QString* problem) {
    NatsAddress address;
    *problem = address.Parse(host, port);
    if (problem->isEmpty() && address.station.isEmpty())
        *problem = QStringLiteral("it names no station: nats://HOST/STATION");
    if (!problem->isEmpty()) return nullptr;
    NatsOptions options = OptionsOf(client, isTls);
    options.servers = address.servers;
    if (MakeBus(options, problem) == nullptr) return nullptr;
    return std::make_unique<NatsConnector>([options](QString* fault) { return MakeBus(options, fault); },
                                           address.station, options.Who());
}

}  // namespace

NatsOptions OptionsOf(const VtClientOptions& client, bool isTls) {
    NatsOptions options;
    options.isTls = isTls;
    options.name = CfgCenter::GetAppName();
    options.caFile = client.caFile;
    options.certificateFile = client.certificateFile;
    options.privateKeyFile = client.privateKeyFile;
    // It has to be elsewhere before the session takes the server for dead.
    options.deadAfter = std::min(options.deadAfter, client.deadAfter / 2);
    options.TakeEnvironment();
    return options;
}

void RegisterScheme() {
    for (const bool isTls : {false, true})
        VtClientCenter::Instance().RegisterScheme(
            isTls ? QStringLiteral("natss") : QStringLiteral("nats"),
            [isTls](const QString& host, int port, const VtClientOptions& client, QString* problem) {
                return MakeConnector(host, port, client, isTls, problem);
            },
            VtClientCenter::EAddress::Own);
}

}  // namespace nats
