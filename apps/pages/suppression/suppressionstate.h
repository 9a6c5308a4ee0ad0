// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

/// What a server told last of one input.
struct InputStatus {
    QString name;
    double hz = 0.0;  ///< 0.0 for none
    bool isKeyed = false;
    QString keyedSince;   ///< UTC, as the server writes times; empty for none
    QString lastBlanked;  ///< an MpxORV; empty for none

    bool operator==(const InputStatus& other) const {
        return name == other.name && hz == other.hz && isKeyed == other.isKeyed &&
               keyedSince == other.keyedSince && lastBlanked == other.lastBlanked;
    }
};

/// What it told last of one module.
struct ModuleStatusView {
    int number = 0;  ///< the module's, and no other's
    QString name;
    QString type;
    QString address;
    QString state;  ///< as suppressionkeys.h names it
    QString reason;
    QString stateSince;
    QString answersAgainSince;  ///< UTC; empty unless it answers, and is in error all the same
    QString lastAnswer;
    std::vector<InputStatus> inputs;

    bool IsLive() const;
    bool operator==(const ModuleStatusView& other) const {
        return number == other.number && name == other.name && type == other.type &&
               address == other.address && state == other.state && reason == other.reason &&
               stateSince == other.stateSince && answersAgainSince == other.answersAgainSince &&
               lastAnswer == other.lastAnswer && inputs == other.inputs;
    }
};

/// What it told last of its whole suppression.
struct SuppressionState {
    bool isThere = false;  ///< the server tells of it at all
    bool isLive = false;   ///< and the connection is there
    std::vector<ModuleStatusView> modules;
    std::vector<double> keyed;         ///< Hz
    std::vector<double> unsupervised;  ///< Hz

    int CountAnswering() const;
    bool operator==(const SuppressionState& other) const {
        return isThere == other.isThere && isLive == other.isLive && modules == other.modules &&
               keyed == other.keyed && unsupervised == other.unsupervised;
    }
};
