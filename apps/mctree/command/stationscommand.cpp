// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/text/description.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/nats/stationlist.h>

#include <QtCore/QEventLoop>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>

#include <algorithm>
#include <chrono>
#include <memory>

namespace mctree {

namespace {

constexpr std::chrono::milliseconds TimeToAnswer(800);

/// Waits until NATS is there, asks, and waits for the answers.
class Inquiry final : public nats::INatsBus::IListener {
  public:
    explicit Inquiry(std::shared_ptr<nats::INatsBus> bus) : m_bus(std::move(bus)), m_list(m_bus, nullptr) {
        m_bus->AddListener(this);
    }
    ~Inquiry() override { m_bus->RemoveListener(this); }
    Inquiry(const Inquiry&) = delete;
    Inquiry& operator=(const Inquiry&) = delete;

    Outcome Run(std::chrono::milliseconds timeout) {
        m_outcome = {EExitCode::NoConnection, QStringLiteral("no answer from NATS in time")};
        QTimer::singleShot(timeout, &m_loop, &QEventLoop::quit);
        m_bus->Open(false);
        m_loop.exec();
        return m_outcome;
    }
    const nats::StationList& GetList() const { return m_list; }

    void OnNatsState(nats::INatsBus::EState state, const QString& reason) override {
        if (state != nats::INatsBus::EState::Open) return End(reason);
        m_list.Ask();
        m_outcome = Outcome();
        QTimer::singleShot(TimeToAnswer, &m_loop, &QEventLoop::quit);
    }
    void OnNatsComplaint(const QString& complaint) override {
        End(QStringLiteral("NATS refuses: %1").arg(complaint));
    }

  private:
    void End(const QString& reason) {
        m_outcome = {EExitCode::NoConnection, safetext::Escaped(reason)};
        m_loop.quit();
    }

    const std::shared_ptr<nats::INatsBus> m_bus;
    nats::StationList m_list;
    QEventLoop m_loop;
    Outcome m_outcome;
};

QString Safe(const QString& text) {
    return text.isEmpty() ? QStringLiteral("-") : safetext::Escaped(text);
}

QString ToText(const nats::StationInfo& station, int width) {
    return station.station.leftJustified(width) + QStringLiteral("  %1 %2  %3  %4  %5")
                                                      .arg(Safe(station.name), Safe(station.version),
                                                           Safe(station.machine), Safe(station.since),
                                                           Safe(station.state));
}

QJsonObject ToObject(const nats::StationInfo& station) {
    return {{QStringLiteral("station"), station.station}, {QStringLiteral("server"), station.name},
            {QStringLiteral("version"), station.version}, {QStringLiteral("machine"), station.machine},
            {QStringLiteral("since"), station.since},     {QStringLiteral("state"), station.state}};
}

void PrintStations(const nats::StationList& list, bool isJson, Printer& printer) {
    int width = 0;
    for (const auto& named : list.Get())
        width = std::max(width, named.first.size());
    for (const auto& [name, station] : list.Get())
        printer.WriteLine(isJson ? ToLine(ToObject(station)) : ToText(station, width));
}

}  // namespace

Outcome RunStations(const Arguments& arguments, Printer& printer) {
    nats::NatsOptions options = nats::OptionsOf(arguments.client, arguments.isNatsEncrypted);
    options.servers = arguments.stations.servers;
    QString problem;
    const std::shared_ptr<nats::INatsBus> bus = nats::MakeBus(options, &problem);
    if (bus == nullptr) return {EExitCode::Usage, problem};
    Inquiry inquiry(bus);
    Outcome outcome = inquiry.Run(arguments.Timeout());
    if (outcome.IsDone()) PrintStations(inquiry.GetList(), arguments.isJson, printer);
    return outcome;
}

}  // namespace mctree
