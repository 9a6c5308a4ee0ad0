// SPDX-License-Identifier: Apache-2.0
#include "ownroad.h"

#include "openaccess.h"
#include "role.h"

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>

namespace bench {

namespace {

using Number = values::ValueNumeric<int>;

QString ValueName(int index) {
    return QStringLiteral("Value%1").arg(index);
}

/// Where client number \a client reports. Each has a subtree of its own, so that no report goes to others.
QString ReportPath(int client) {
    return QStringLiteral("/Reports/Client%1").arg(client);
}

/// Passes the changes of one number on, with the number that it has on the road.
class NumberObserver final : public IObserver {
  public:
    using Handler = std::function<void(int number, int content)>;

    NumberObserver(Number& value, int number, const Handler& handler)
        : m_value(value), m_number(number), m_handler(handler) {
        value.AddObserver(this);
    }
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code == changecode::ContentChanged) m_handler(m_number, m_value.GetValue());
    }

  private:
    Number& m_value;
    int m_number;
    const Handler& m_handler;  // of the end of the road
};

using Observers = std::vector<std::unique_ptr<NumberObserver>>;

class OwnServerEnd final : public ServerEnd {
  public:
    explicit OwnServerEnd(const RoadSetup& setup) : m_server(m_access) {
        for (int i = 0; i < setup.values; ++i) {
            auto* const value =
                values::CreateValue<Number>(QStringLiteral("/Bench/") + ValueName(i), nullptr);
            if (setup.everyChange) value->SetDelivery(values::EDelivery::EveryChange);
            m_values.push_back(value);
        }
        for (int i = 0; i < setup.clients; ++i) {
            const QString path = ReportPath(i) + QStringLiteral("/Report");
            auto* const report = values::CreateValue<Number>(path, nullptr);
            report->SetValue(-1);  // so that a first report of 0 is a change
            m_observers.push_back(std::make_unique<NumberObserver>(*report, i, onReport));
        }
    }

    void Open() override {
        VtServerOptions options;
        options.port = 0;
        QString error;
        if (!m_server.Listen(options, &error)) Role::Fail(error);
        onOpen(m_server.GetPort());
    }
    void Set(int index, int content) override {
        m_values[static_cast<std::size_t>(index)]->SetValue(content);
    }

  private:
    OpenAccess m_access;
    values::Tree m_tree;
    VtServer m_server;
    std::vector<Number*> m_values;
    Observers m_observers;
};

std::shared_ptr<values::Tree> TreeOfAllClients() {
    static const auto tree = std::make_shared<values::Tree>();
    return tree;
}

class OwnClientEnd final : public ClientEnd, private IObserver {
  public:
    OwnClientEnd(const RoadSetup& setup, int client, int port)
        : m_values(setup.values), m_client(client), m_port(port) {}

    void Open() override {
        m_connection = VtClientCenter::Instance().CreateVtClient("127.0.0.1", m_port);
        m_connection->AddObserver(this);
        m_connection->AddTic(Mirror() + QStringLiteral("/Values,/Bench"), "");
        m_connection->AddTic(Mirror() + QStringLiteral("/Report,") + ReportPath(m_client), "");
    }
    void Report(int content) override { m_report->SetValue(content); }

  private:
    QString Mirror() const { return QStringLiteral("/Client%1").arg(m_client); }

    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != connectioncode::TicsChanged || !m_connection->AreAllTicsEstablished() || m_report) return;
        for (int i = 0; i < m_values; ++i) {
            const QString path = Mirror() + QStringLiteral("/Values/") + ValueName(i);
            auto* const value = values::FindValue<Number>(path, nullptr, nullptr);
            if (!value) Role::Fail(QStringLiteral("no mirrored value at ") + path);
            m_observers.push_back(std::make_unique<NumberObserver>(*value, i, onChange));
        }
        m_report = values::FindValue<Number>(Mirror() + QStringLiteral("/Report/Report"), nullptr, nullptr);
        if (!m_report) Role::Fail(QStringLiteral("no mirrored report"));
        onReady();
    }

    std::shared_ptr<values::Tree> m_tree = TreeOfAllClients();
    int m_values;
    int m_client;
    int m_port;
    IVtClient* m_connection = nullptr;  // of the center
    Number* m_report = nullptr;
    Observers m_observers;
};

}  // namespace

Road MakeOwnRoad() {
    return {QStringLiteral("ours"),
            [](const RoadSetup& setup) { return std::make_unique<OwnServerEnd>(setup); },
            [](const RoadSetup& setup, int client, int port) {
                return std::make_unique<OwnClientEnd>(setup, client, port);
            }};
}

}  // namespace bench
