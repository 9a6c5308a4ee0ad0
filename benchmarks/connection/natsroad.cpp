// SPDX-License-Identifier: Apache-2.0
#include "natsroad.h"

#include "natsoffer.h"
#include "ownends.h"

#include <platform/nats/natsstation.h>

#include <QtCore/QTimer>

namespace bench {

namespace {

/// Until so much after a client is there, it has taken the shared roads.
constexpr std::chrono::milliseconds BoardingTime(3000);

class NatsServerEnd final : public OwnServerEnd {
  public:
    explicit NatsServerEnd(const RoadSetup& setup) : OwnServerEnd(setup), m_port(setup.brokerPort) {}
    ~NatsServerEnd() override { Server().Close(QStringLiteral("the end")); }

    void Open() override {
        Listen();
        m_offer = OfferAtNats(Server(), m_port, [this] { onOpen(m_port); });
    }

    quint64 Published() const override { return m_offer ? m_offer->GetFigures().messages : 0; }

  private:
    void TakeReport(int client, int content) override {
        if (content != 0) return onReport(client, content);
        QTimer::singleShot(BoardingTime, &m_timers, [this, client] { onReport(client, 0); });
    }

    const int m_port;
    QObject m_timers;
    std::shared_ptr<nats::NatsStation> m_offer;
};

}  // namespace

Road MakeNatsRoad() {
    return {QStringLiteral("nats"),
            [](const RoadSetup& setup) { return std::make_unique<NatsServerEnd>(setup); },
            [](const RoadSetup& setup, int client, int port) {
                return std::make_unique<OwnClientEnd>(setup, client, StationAtNats(port), port);
            }};
}

}  // namespace bench
