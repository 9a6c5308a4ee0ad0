// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/server/recalls.h>

#include <functional>

namespace vt {

class ServerHub;

/// Where one client asks what values held before: refuses what it may not know, lets the rest wait for its
/// turn, and passes the history's answers on.
class RecallDesk {
  public:
    /// \a hub outlives this. \a reply sends an answer, for as long as there is anybody to send it to.
    RecallDesk(ServerHub& hub, std::function<void(const RecalledMessage&)> reply);

    /// Takes a question of \a peer, whose path is absolute. False if it does not wait, because it was
    /// refused.
    bool Ask(const VtPeer& peer, const RecallMessage& recall);
    /// Asks the history what is due, for as long as \a mayAsk.
    void Serve(const std::function<bool()>& mayAsk);
    bool IsEmpty() const { return m_recalls.IsEmpty(); }
    std::size_t HeldBytes() const { return m_recalls.HeldBytes(); }

  private:
    ServerHub& m_hub;
    std::function<void(const RecalledMessage&)> m_reply;
    Recalls m_recalls;
};

}  // namespace vt
