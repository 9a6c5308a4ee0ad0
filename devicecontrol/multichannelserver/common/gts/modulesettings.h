// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulename.h>
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
    std::vector<QString> labels;      ///< what people call the inputs; empty where they call it nothing
    QString label = QString();        ///< what people call the module; likewise

    /// What people are told of it: "Tower mast", or "ADAM-6051 1".
    QString GetName() const { return modulename::OfModule(label, type, index); }
    bool operator==(const ModuleSettings& other) const {
        return index == other.index && type == other.type && address == other.address &&
               pollInterval == other.pollInterval && frequencies == other.frequencies &&
               labels == other.labels && label == other.label;
    }
    bool operator!=(const ModuleSettings& other) const { return !(*this == other); }
};
