// SPDX-License-Identifier: Apache-2.0
#include "crowdrole.h"

#include "natsoffer.h"
#include "pinning.h"

#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QTimer>

namespace bench {

CrowdRole::CrowdRole(const Settings& settings)
    : Role(settings), m_count(settings.Int(QStringLiteral("crowd"))) {
    m_onChange = [this](int /*number*/, int /*content*/) {
        if (m_clients.empty()) QTimer::singleShot(0, this, &CrowdRole::Come);
    };
    // Each of the crowd would be on a machine of its own: what they need themselves is nothing that holds up
    // those who are there.
    YieldCores();
}

void CrowdRole::Start() {
    m_scout = Open(QStringLiteral("/Scout"));
}

IVtClient* CrowdRole::Open(const QString& mirror) {
    const int port = GetSettings().Int(QStringLiteral("port"));
    const bool isOverNats = GetSettings().Text(QStringLiteral("road")) == QLatin1String("nats");
    const QByteArray address = isOverNats ? StationAtNats(port) : QByteArray("127.0.0.1");
    IVtClient* const client = VtClientCenter::Instance().CreateVtClient(address.constData(), port);
    client->AddObserver(this);
    client->AddTic(mirror + QStringLiteral(",/Bench"), "");
    return client;
}

void CrowdRole::Update(Observable* source, TChangeCode code) {
    if (code != connectioncode::TicsChanged) return;
    if (source == m_scout && m_scout->AreAllTicsEstablished()) return Watch();
    for (IVtClient* const client : m_clients) {
        if (client != source || !client->AreAllTicsEstablished()) continue;
        client->DeleteObserver(this);
        m_slowest = m_watch.Seconds();
        if (++m_established == m_count) QTimer::singleShot(0, this, &CrowdRole::Go);
    }
}

// What it costs to follow what changes is not measured here.
void CrowdRole::Go() {
    for (IVtClient* const client : m_clients)
        VtClientCenter::Instance().DestroyVtClient(client);
    TellResult(Settings().Set(QStringLiteral("slowest"), m_slowest));
}

void CrowdRole::Watch() {
    m_scout->DeleteObserver(this);
    auto* const value =
        values::FindValue<NumberObserver::Number>(QStringLiteral("/Scout/Value0"), nullptr, nullptr);
    if (!value) Fail(QStringLiteral("no mirrored value"));
    m_observer = std::make_unique<NumberObserver>(*value, 0, m_onChange);
}

void CrowdRole::Come() {
    if (!m_clients.empty()) return;
    m_watch.Start();
    for (int i = 0; i < m_count; ++i)
        m_clients.push_back(Open(QStringLiteral("/Crowd%1").arg(i)));
}

}  // namespace bench
