// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <QtCore/QString>

#include <vector>

/// What people set of one data module.
struct ModuleSettings {
    int index = -1;
    QString type;
    QString address;
    PollInterval pollInterval{};
    std::vector<double> frequencies;  ///< Hz, by input; 0.0 where none is assigned

    bool operator==(const ModuleSettings& other) const {
        return index == other.index && type == other.type && address == other.address &&
               pollInterval == other.pollInterval && frequencies == other.frequencies;
    }
    bool operator!=(const ModuleSettings& other) const { return !(*this == other); }
};
