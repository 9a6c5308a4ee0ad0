// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsexport.h>

#include <QtCore/QString>

#include <functional>
#include <map>
#include <memory>

namespace nats {

/// Who offers a station, as it says itself. All texts are somebody else's.
struct StationInfo {
    QString station;
    QString name;     ///< what the server calls itself
    QString version;  ///< and its version
    QString machine;
    QString state;      ///< how its device is
    QString stateCode;  ///< the same for who speaks another language; may be empty
    QString since;      ///< when it began, UTC, ISO 8601
};

/// The stations that are there, without any configuration: each says so every few seconds, and when it is
/// asked. Main thread.
class MCS_NATS_EXPORT StationList {
  public:
    using Handler = std::function<void(const StationInfo& station)>;

    /// \a onStation, if there is one, hears of each time that one says that it is there.
    StationList(std::shared_ptr<INatsBus> bus, Handler onStation);
    ~StationList();
    StationList(const StationList&) = delete;
    StationList& operator=(const StationList&) = delete;

    /// Asks all to say so; they do within half a second.
    void Ask();
    /// By their names. Not more than ten thousand.
    const std::map<QString, StationInfo>& Get() const { return m_stations; }

  private:
    void OnHere(const NatsMessage& message);

    const std::shared_ptr<INatsBus> m_bus;
    const Handler m_onStation;
    const int m_subscription;
    std::map<QString, StationInfo> m_stations;
};

}  // namespace nats
