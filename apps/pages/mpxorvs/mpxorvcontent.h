// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What one MpxORV is and does, as last read from the tree.
struct MpxOrvContent {
    enum class EState {
        Idle,
        AtWork,    ///< at something else than a frequency of its own
        Tuned,     ///< to a frequency, by a channel of its own
        Watching,  ///< reads a frequency from the range of the job master
        Master     ///< the job master, tuned or not
    };

    QString path;  ///< of its node
    QString name;
    QString order;  ///< by which names are ordered, the same in every console
    bool isStatic = false;
    bool isComplete = false;  ///< the server's part of it is there
    bool isStale = false;     ///< not known to hold any more

    EState state = EState::Idle;
    QString mode;       ///< of operation, as the server says
    double hz = 0.0;    ///< 0: tuned to nothing
    QString since;      ///< it is tuned to that, as the server tells moments, which as texts have their order
    bool obeys = true;  ///< the ground transmitter suppression
    QString switchedBy;  ///< who said so; empty while nobody did, or where the server's window did
    QString switchedSince;
    QStringList clients;
    QString comment;

    bool IsMaster() const { return state == EState::Master; }
};

inline bool operator==(const MpxOrvContent& a, const MpxOrvContent& b) {
    return a.path == b.path && a.isStatic == b.isStatic && a.isComplete == b.isComplete &&
           a.isStale == b.isStale && a.state == b.state && a.mode == b.mode && a.hz == b.hz &&
           a.since == b.since && a.obeys == b.obeys && a.switchedBy == b.switchedBy &&
           a.switchedSince == b.switchedSince && a.clients == b.clients && a.comment == b.comment;
}
