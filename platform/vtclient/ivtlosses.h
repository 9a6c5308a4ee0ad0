// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// What has passed a client by: changes that it was not told, of which only the last contents came later. So
/// messages, events and whatever else counts with each change are missing between two moments.
struct VtLoss {
    QString path;               ///< of the subtree at the server
    QDateTime from;             ///< until then nothing was missed; UTC, by the clock of this machine
    QDateTime until;            ///< from then on nothing is
    bool wasConnected = false;  ///< the connection held, so nothing else tells of it
};

/// What a client tells those to whom every change counts. Clients of VtClientCenter are this too: ask by
/// dynamic_cast. Main thread.
///
/// Observers of the client are told connectioncode::ChangesLost (21) for each subtree, once it is established
/// again, after its tics have told so.
class MCS_CONNECTION_EXPORT IVtLosses {
  public:
    virtual ~IVtLosses();

    /// What was missed last; meaningful while that is told.
    virtual const VtLoss& GetLastLoss() const = 0;

  protected:
    IVtLosses() = default;
    IVtLosses(const IVtLosses&) = default;
    IVtLosses& operator=(const IVtLosses&) = default;
};
