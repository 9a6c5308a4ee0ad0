// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>
#include <devicecontrol/multichannelserver/common/gts/modulename.h>
#include <devicecontrol/multichannelserver/common/gts/modulestate.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <cstddef>
#include <vector>

/// A look at one data module, which copies nothing: good until the module is told of anything else.
struct ModuleView {
    int number = 0;  ///< the module's as long as its plant lives, and no other's
    const ModuleIdentity& identity;
    PollInterval pollInterval{};
    EModuleState state = EModuleState::Disconnected;
    const QString& reason;                   ///< why it is in this state, one line of English; may be empty
    const QDateTime& stateSince;             ///< UTC
    QDateTime lastAnswer;                    ///< UTC; null if it never answered
    QDateTime answersAgainSince;             ///< UTC; null unless it answers, and is in error all the same
    bool isSwitchedOff = false;              ///< an operator disconnected it, and nobody connected it since
    quint32 inputDiscretes = 0;              ///< bit i is input i; means nothing while it is not connected
    const std::vector<double>& frequencies;  ///< Hz, by input; 0.0 where none is assigned
    const std::vector<QString>& labels;  ///< what people call the inputs; empty where they call it nothing

    QString GetName() const { return identity.GetName(); }  ///< What people call it.
    /// What people call the input, which is one of the module's.
    QString GetInputName(int input) const {
        return modulename::OfInput(labels[static_cast<std::size_t>(input)], input);
    }
    /// Whether the transmitter at an input that reads so is keyed: that input reads 0.
    bool IsKeyed(int input) const {
        return state == EModuleState::Connected && ((inputDiscretes >> input) & 1U) == 0;
    }
};
