// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string_view>

namespace nats {

/// Who offers a station, as it says itself: in its claim, and now and then to all.
struct Presence {
    enum class EWhat {
        Claims,  ///< wants the station
        Holds    ///< has it
    };

    EWhat what = EWhat::Holds;
    QString station;
    quint64 instance = 0;  ///< drawn at its start
    QString name;          ///< what it calls itself
    QString version;
    QString machine;
    qint64 process = 0;
    QString since;      ///< UTC, ISO 8601
    QString state;      ///< how its device is, for people
    QString stateCode;  ///< the same for who speaks another language; left out where it is too long

    QByteArray Write() const;  ///< JSON
    static std::optional<Presence> Read(std::string_view text);
    /// "mcserver on tower1 (process 4711, since 2026-11-22T10:00:00Z)".
    QString ToText() const;
};

}  // namespace nats
