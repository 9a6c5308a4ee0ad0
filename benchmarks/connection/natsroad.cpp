// SPDX-License-Identifier: Apache-2.0
#include "natsroad.h"

#include "ownends.h"
#include "role.h"

#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/natsstation.h>

#include <QtCore/QTimer>

namespace bench {

namespace {

const QString StationName = QStringLiteral("bench");

/// Until so much after a client is there, it has taken the shared roads.
constexpr std::chrono::milliseconds BoardingTime(3000);

class NatsServerEnd final : public OwnServerEnd {
  public:
    explicit NatsServerEnd(const RoadSetup& setup) : OwnServerEnd(setup), m_port(setup.brokerPort) {}
    ~NatsServerEnd() override { Server().Close(QStringLiteral("the end")); }

    void Open() override {
        Listen();
        nats::NatsOptions options;
        options.servers = {{QStringLiteral("127.0.0.1"), m_port}};
        QString problem;
        const std::shared_ptr<nats::INatsBus> bus = nats::MakeBus(options, &problem);
        if (!bus) Role::Fail(problem);
        m_station = std::make_unique<nats::NatsStation>(
            Server(), bus, StationName,
            nats::NatsStation::Description{QStringLiteral("bench"), QString(), {}},
            [this](nats::NatsStation::EState state, const QString& reason) {
                if (state == nats::NatsStation::EState::Taken) Role::Fail(reason);
                if (state == nats::NatsStation::EState::Offering) onOpen(m_port);
            });
        bus->Open(true);
        m_station->Start();
    }

  private:
    void TakeReport(int client, int content) override {
        if (content != 0) return onReport(client, content);
        QTimer::singleShot(BoardingTime, &m_timers, [this, client] { onReport(client, 0); });
    }

    const int m_port;
    QObject m_timers;
    std::unique_ptr<nats::NatsStation> m_station;
};

}  // namespace

Road MakeNatsRoad() {
    return {QStringLiteral("nats"),
            [](const RoadSetup& setup) { return std::make_unique<NatsServerEnd>(setup); },
            [](const RoadSetup& setup, int client, int port) {
                nats::RegisterScheme();
                const QByteArray address =
                    "nats://127.0.0.1:" + QByteArray::number(port) + '/' + StationName.toLatin1();
                return std::make_unique<OwnClientEnd>(setup, client, address, port);
            }};
}

}  // namespace bench
