// SPDX-License-Identifier: Apache-2.0
#include "ownends.h"

#include "role.h"

#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <utility>

namespace bench {

namespace {

using Number = NumberObserver::Number;

QString ValueName(int index) {
    return QStringLiteral("Value%1").arg(index);
}

/// Where client number \a client reports. Each has a subtree of its own, so that no report goes to others.
QString ReportPath(int client) {
    return QStringLiteral("/Reports/Client%1").arg(client);
}

std::shared_ptr<values::Tree> TreeOfAllClients() {
    static const auto tree = std::make_shared<values::Tree>();
    return tree;
}

}  // namespace

NumberObserver::NumberObserver(Number& value, int number, const Handler& handler)
    : m_value(value), m_number(number), m_handler(handler) {
    value.AddObserver(this);
}

void NumberObserver::Update(Observable* /*source*/, TChangeCode code) {
    if (code == changecode::ContentChanged) m_handler(m_number, m_value.GetValue());
}

OwnServerEnd::OwnServerEnd(const RoadSetup& setup) : m_server(m_access) {
    for (int i = 0; i < setup.values; ++i) {
        auto* const value = values::CreateValue<Number>(QStringLiteral("/Bench/") + ValueName(i), nullptr);
        if (setup.everyChange) value->SetDelivery(values::EDelivery::EveryChange);
        m_values.push_back(value);
    }
    for (int i = 0; i < setup.clients; ++i) {
        const QString path = ReportPath(i) + QStringLiteral("/Report");
        auto* const report = values::CreateValue<Number>(path, nullptr);
        report->SetValue(-1);  // so that a first report of 0 is a change
        m_observers.push_back(std::make_unique<NumberObserver>(*report, i, m_takeReport));
    }
}

void OwnServerEnd::Listen() {
    VtServerOptions options;
    options.port = 0;
    QString error;
    if (!m_server.Listen(options, &error)) Role::Fail(error);
}

void OwnServerEnd::Open() {
    Listen();
    onOpen(m_server.GetPort());
}

void OwnServerEnd::Set(int index, int content) {
    m_values[static_cast<std::size_t>(index)]->SetValue(content);
}

OwnClientEnd::OwnClientEnd(const RoadSetup& setup, int client, QByteArray address, int port)
    : m_tree(TreeOfAllClients()),
      m_values(setup.values),
      m_client(client),
      m_address(std::move(address)),
      m_port(port) {}

void OwnClientEnd::Open() {
    m_connection = VtClientCenter::Instance().CreateVtClient(m_address.constData(), m_port);
    m_connection->AddObserver(this);
    m_connection->AddTic(Mirror() + QStringLiteral("/Values,/Bench"), "");
    m_connection->AddTic(Mirror() + QStringLiteral("/Report,") + ReportPath(m_client), "");
}

void OwnClientEnd::Report(int content) {
    m_report->SetValue(content);
}

void OwnClientEnd::Update(Observable* /*source*/, TChangeCode code) {
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

}  // namespace bench
