// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <QtCore/QString>

#include <cstdint>

/// What there is to know of one receiver of a device that is made of several.
struct ReceiverFacts {
    enum class EState : std::uint8_t { Disconnected, Connected, Error };
    static constexpr int NoStrength = -200;

    QString name;
    QString address;
    EState state = EState::Disconnected;
    CodedText reason;           ///< of Error
    double hz = 0.0;            ///< to which it says that it is tuned; 0: not known
    QString mode;               ///< likewise
    int strength = NoStrength;  ///< dB above S9

    /// In \a newState, with nothing known of what it receives.
    void Reset(EState newState, const CodedText& why) {
        state = newState;
        reason = why;
        hz = 0.0;
        mode.clear();
        strength = NoStrength;
    }
};
