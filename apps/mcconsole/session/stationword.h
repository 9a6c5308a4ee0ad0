// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>

#include <QtCore/QString>

class Situation;

/// How a station is, as short as it can be told to who looks at another one. The worst that there is comes
/// first: a lost server, frequencies that nobody watches, the device, whatever is worth a look, and a console
/// that is not tuned there.
struct StationWord {
    ESeverity severity = ESeverity::Unknown;
    QString name;   ///< of the station, as people call it
    QString word;   ///< changes when something happens, and not with time
    QString cause;  ///< in lines

    static StationWord Of(const Situation& situation);

    bool operator==(const StationWord& other) const {
        return severity == other.severity && name == other.name && word == other.word && cause == other.cause;
    }
};
