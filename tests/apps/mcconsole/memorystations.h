// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/stations/stationfinder.h>

#include <tests/platform/nats/memorybus.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <algorithm>
#include <memory>

/// NATS as a test plays it, with the stations that it says are there.
class MemoryStations {
  public:
    StationFinder::MakeBus Maker() {
        return [this](const nats::NatsOptions& wanted, QString* why) -> std::shared_ptr<nats::INatsBus> {
            options = wanted;
            *why = problem;
            if (!problem.isEmpty()) return nullptr;
            m_bus = std::make_shared<MemoryBus>();
            return m_bus;
        };
    }

    void BeOpen() {
        m_bus->TellState(nats::INatsBus::EState::Open, QString());
        asked +=
            static_cast<int>(std::count_if(m_bus->published.begin(), m_bus->published.end(),
                                           [](const auto& one) { return one.subject == "mcs._all.ask"; }));
        m_bus->published.clear();
    }
    void Fail(const QString& reason) { m_bus->TellState(nats::INatsBus::EState::Connecting, reason); }
    void Refuse(const QString& complaint) { m_bus->Complain(complaint); }
    void Say(const char* station, const char* machine = "hill") {
        const QByteArray text = QByteArrayLiteral(
            "{\"what\":\"hold\",\"station\":\"%1\",\"instance\":\"1\",\"name\":\"mcserver\","
            "\"version\":\"0.1\",\"machine\":\"%2\",\"process\":1,"
            "\"since\":\"2026-11-22T10:00:00Z\",\"state\":\"connected to vm_1 at localhost\","
            "\"stateCode\":\"{\\\"args\\\":[\\\"vm_1\\\",\\\"localhost\\\"],\\\"code\\\":"
            "\\\"device-connected-to\\\"}\"}");
        m_bus->Deliver("mcs." + std::string(station) + ".here",
                       QByteArray(text).replace("%1", station).replace("%2", machine));
    }
    bool IsClosed() const { return m_bus->State() == nats::INatsBus::EState::Closed; }

    nats::NatsOptions options;  ///< of the last connection
    QString problem;            ///< why there is none to be had; empty: there is one
    int asked = 0;              ///< how often all were

  private:
    std::shared_ptr<MemoryBus> m_bus;
};
