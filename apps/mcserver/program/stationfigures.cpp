// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/stationfigures.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

#include <utility>

namespace {

constexpr double MostOfAFigure = 9e15;  // a double counts by ones up to there

QString FigurePath(const char* key) {
    return mcskeys::DefaultBasePath(mcskeys::Status) + QStringLiteral("/Nats/") + QLatin1String(key);
}

void TellFigure(const char* key, const QString& text) {
    values::ProvideValue<values::Value<QString>>(FigurePath(key), text, true, nullptr);
}

void TellFigure(const char* key, bool flag) {
    values::ProvideValue<values::Value<bool>>(FigurePath(key), flag, true, nullptr);
}

template <class T>
void TellCount(const char* key, T count) {
    values::ProvideValue<values::ValueNumeric<double>>(FigurePath(key), static_cast<double>(count), 0.0,
                                                       MostOfAFigure, true, nullptr);
}

}  // namespace

StationFigures::StationFigures(const nats::NatsStation& station, QString name)
    : m_station(station), m_name(std::move(name)) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Tell(); });
    m_timer.start(Interval);
    Tell();
}

void StationFigures::Tell() const {
    const nats::NatsStation::Figures figures = m_station.GetFigures();
    TellFigure("Station", m_name);
    TellFigure("Connected", figures.isConnected);
    TellFigure("Server", figures.server);
    TellFigure("Problem", figures.problem);
    TellFigure("Kept", figures.isKept);
    TellCount("Sessions", figures.sessions);
    TellCount("Roads", figures.roads.roads);
    TellCount("Followers", figures.roads.followers);
    TellCount("Taken", figures.roads.taken);
    TellCount("GivenUp", figures.roads.givenUp);
    TellCount("LostSessions", figures.lostSessions);
    TellCount("PublishedMessages", figures.messages);
    TellCount("PublishedBytes", figures.bytes);
    TellCount("LostMessages", figures.lost);
    TellCount("UnsentBytes", figures.unsent);
}
