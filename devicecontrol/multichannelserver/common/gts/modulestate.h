// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QtGlobal>

enum class EModuleState { Disconnected, Connected, Error };

/// What holds of one data module at this moment.
struct ModuleState {
    ModuleSettings settings;
    EModuleState state = EModuleState::Disconnected;
    quint32 inputDiscretes = 0;  ///< bit i is input i; means nothing while it is not connected

    /// Whether the transmitter at an input that reads so is keyed: that input reads 0.
    bool IsKeyed(int input) const {
        return state == EModuleState::Connected && ((inputDiscretes >> input) & 1U) == 0;
    }
    bool operator==(const ModuleState& other) const {
        return settings == other.settings && state == other.state && inputDiscretes == other.inputDiscretes;
    }
};
