// SPDX-License-Identifier: Apache-2.0
#include "treeroles.h"

#include "../memoryuse.h"
#include "natsoffer.h"

#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

namespace bench {

namespace {

using Number = values::ValueNumeric<double>;
using Flag = values::ValueNumeric<int>;

constexpr int ValuesPerNode = 1000;
constexpr int SettleTime = 300;  // ms: then everything that was on its way has been released

/// Each value has a name text of its own, as when names come from a file or a peer.
void FillTree(const QString& root, int count) {
    for (int i = 0; i < count; ++i) {
        const QString path =
            root + QStringLiteral("/Node%1/Value%2").arg(i / ValuesPerNode).arg(i % ValuesPerNode);
        values::ProvideValue<Number>(path, i * 0.5, 0.0, 1e9, false, nullptr);
    }
}

/// By which client number \a client tells that it has the whole tree.
QString FlagPath(const QString& root, int client) {
    return root + QStringLiteral("/Flags/Client%1").arg(client);
}

double Growth(std::size_t before) {
    return static_cast<double>(HeapInUse()) - static_cast<double>(before);
}

}  // namespace

TreeServer::TreeServer(const Settings& settings)
    : Role(settings), m_server(m_access), m_missingClients(settings.Int(QStringLiteral("clients"), 1)) {}

void TreeServer::Start() {
    FillTree(QStringLiteral("/Data"), GetSettings().Int(QStringLiteral("values")));
    for (int i = 0; i < m_missingClients; ++i)
        values::CreateValue<Flag>(FlagPath(QStringLiteral("/Data"), i), nullptr)->AddObserver(this);
    VtServerOptions options;
    options.port = 0;
    QString error;
    if (!m_server.Listen(options, &error)) Fail(error);
    m_heapAtStart = HeapInUse();
    m_turns.Start();
    const int broker = GetSettings().Int(QStringLiteral("broker"));
    if (broker == 0) return TellPort(m_server.GetPort());
    m_offer = OfferAtNats(m_server, broker, [broker] { TellPort(broker); });
}

void TreeServer::Update(Observable* /*source*/, TChangeCode code) {
    if (code != changecode::ContentChanged || --m_missingClients > 0) return;
    QTimer::singleShot(SettleTime, this, &TreeServer::TellResultNow);
}

void TreeServer::TellResultNow() const {
    TellResult(Settings()
                   .Set(QStringLiteral("turn"), m_turns.LongestBusySeconds())
                   .Set(QStringLiteral("turnclock"), m_turns.LongestSeconds())
                   .Set(QStringLiteral("heap"), Growth(m_heapAtStart)));
}

TreeClient::TreeClient(const Settings& settings)
    : Role(settings), m_values(settings.Int(QStringLiteral("values"))) {}

void TreeClient::Start() {
    if (GetSettings().Int(QStringLiteral("compare")) != 0) {
        const std::size_t before = HeapInUse();
        FillTree(QStringLiteral("/Own"), m_values);
        m_heapPerTree = HeapInUse() - before;
    }
    m_heapBefore = HeapInUse();
    m_turns.Start();
    m_watch.Start();
    Connect();
}

void TreeClient::Connect() {
    const int port = GetSettings().Int(QStringLiteral("port"));
    const int count = GetSettings().Int(QStringLiteral("count"), 1);
    const bool isOverNats = GetSettings().Int(QStringLiteral("broker")) != 0;
    const QByteArray address = isOverNats ? StationAtNats(port) : QByteArray("127.0.0.1");
    for (int i = 0; i < count; ++i) {
        m_clients.push_back(VtClientCenter::Instance().CreateVtClient(address.constData(), port));
        m_clients.back()->AddTic(QStringLiteral("/Mirror%1,/Data").arg(i), "");
        m_clients.back()->AddObserver(this);
    }
}

void TreeClient::Update(Observable* source, TChangeCode code) {
    if (code != connectioncode::TicsChanged) return;
    for (std::size_t i = 0; i < m_clients.size(); ++i) {
        if (m_clients[i] != source || !m_clients[i]->AreAllTicsEstablished()) continue;
        const int number = static_cast<int>(i);
        const QString last = QStringLiteral("/Mirror%1/Node%2/Value%3")
                                 .arg(number)
                                 .arg((m_values - 1) / ValuesPerNode)
                                 .arg((m_values - 1) % ValuesPerNode);
        if (!values::FindValue<Number>(last, nullptr, nullptr)) Fail(QStringLiteral("no value ") + last);
        const QString flag = FlagPath(QStringLiteral("/Mirror%1").arg(number), number);
        values::FindValue<Flag>(flag, nullptr, nullptr)->SetValue(1);
        ++m_established;
        source->DeleteObserver(this);
    }
    if (m_established < static_cast<int>(m_clients.size())) return;
    m_seconds = m_watch.Seconds();
    if (GetSettings().Int(QStringLiteral("forget")) != 0) EditAndDeleteAll();
    QTimer::singleShot(SettleTime, this, &TreeClient::TellResultNow);
}

void TreeClient::EditAndDeleteAll() {
    const auto pathOf = [](int value) {
        return QStringLiteral("/Mirror0/Node%1/Value%2")
            .arg(value / ValuesPerNode)
            .arg(value % ValuesPerNode);
    };
    for (int i = 0; i < m_values; ++i)
        values::FindValue<Number>(pathOf(i), nullptr, nullptr)->SetValue(1.0 + i);
    for (int i = 0; i < m_values; ++i)
        m_tree.Delete(m_tree.FindItem(pathOf(i)));
}

void TreeClient::TellResultNow() const {
    const double trees = static_cast<double>(m_clients.size());
    TellResult(
        Settings()
            .Set(QStringLiteral("seconds"), m_seconds)
            .Set(QStringLiteral("turn"), m_turns.LongestBusySeconds())
            .Set(QStringLiteral("turnclock"), m_turns.LongestSeconds())
            .Set(QStringLiteral("heap"), Growth(m_heapBefore) / trees - static_cast<double>(m_heapPerTree)));
}

}  // namespace bench
