// SPDX-License-Identifier: Apache-2.0
#include "plainnatsroad.h"

#include "role.h"

#include <nats/nats.h>

#include <QtCore/QByteArray>

#include <array>
#include <cstring>
#include <mutex>
#include <vector>

namespace bench {

namespace {

constexpr const char* ChangeSubject = "bench.change";
constexpr const char* ReportSubject = "bench.report";

/// What both subjects carry, changes one after the other. A report's index is the number of the client.
using Pair = std::array<int, 2>;

/// The library tells each connection's words in a thread of its own, and whoever listens expects one.
std::mutex oneAtATime;

/// One connection, which is told of what comes in a thread of the library. It is never closed: the process
/// ends with it.
class PlainNatsLink {
  public:
    using Handler = std::function<void(int index, int content)>;

    void Open(int port, const char* subject, Handler handler) {
        m_handler = std::move(handler);
        natsOptions* options = nullptr;
        natsSubscription* subscription = nullptr;
        const QByteArray url = "nats://127.0.0.1:" + QByteArray::number(port);
        const bool isOpen =
            natsOptions_Create(&options) == NATS_OK && natsOptions_SetURL(options, url) == NATS_OK &&
            natsOptions_SetSendAsap(options, true) == NATS_OK &&
            natsConnection_Connect(&m_connection, options) == NATS_OK &&
            natsConnection_Subscribe(&subscription, m_connection, subject, OnMessage, this) == NATS_OK &&
            natsConnection_Flush(m_connection) == NATS_OK;
        natsOptions_Destroy(options);
        if (!isOpen) Role::Fail(QStringLiteral("no connection to NATS"));
    }

    void Send(const char* subject, const std::vector<Pair>& pairs) {
        natsConnection_Publish(m_connection, subject, pairs.data(),
                               static_cast<int>(pairs.size() * sizeof(Pair)));
    }

  private:
    static void OnMessage(natsConnection* /*connection*/, natsSubscription* /*subscription*/,
                          natsMsg* message, void* closure) {
        std::vector<Pair> pairs(static_cast<std::size_t>(natsMsg_GetDataLength(message)) / sizeof(Pair));
        if (!pairs.empty()) std::memcpy(pairs.data(), natsMsg_GetData(message), pairs.size() * sizeof(Pair));
        natsMsg_Destroy(message);
        const std::lock_guard lock(oneAtATime);
        for (const Pair& pair : pairs)
            static_cast<PlainNatsLink*>(closure)->m_handler(pair[0], pair[1]);
    }

    Handler m_handler;
    natsConnection* m_connection = nullptr;
};

class PlainNatsServerEnd final : public ServerEnd {
  public:
    explicit PlainNatsServerEnd(const RoadSetup& setup) : m_port(setup.brokerPort) {}

    void Open() override {
        m_link.Open(m_port, ReportSubject, [this](int client, int content) { onReport(client, content); });
        onOpen(m_port);
    }
    void Set(int index, int content) override { m_changes.push_back({index, content}); }
    void Send() override {
        m_link.Send(ChangeSubject, m_changes);
        m_changes.clear();
    }

  private:
    const int m_port;
    std::vector<Pair> m_changes;
    PlainNatsLink m_link;
};

class PlainNatsClientEnd final : public ClientEnd {
  public:
    PlainNatsClientEnd(int client, int port) : m_client(client), m_port(port) {}

    void Open() override {
        m_link.Open(m_port, ChangeSubject, [this](int index, int content) { onChange(index, content); });
        onReady();
    }
    void Report(int content) override { m_link.Send(ReportSubject, {{m_client, content}}); }

  private:
    const int m_client;
    const int m_port;
    PlainNatsLink m_link;
};

}  // namespace

Road MakePlainNatsRoad() {
    return {QStringLiteral("plainnats"),
            [](const RoadSetup& setup) { return std::make_unique<PlainNatsServerEnd>(setup); },
            [](const RoadSetup& /*setup*/, int client, int port) {
                return std::make_unique<PlainNatsClientEnd>(client, port);
            }};
}

}  // namespace bench
