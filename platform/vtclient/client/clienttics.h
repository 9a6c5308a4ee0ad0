// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/calldepth.h>
#include <platform/vtclient/client/clientlink.h>
#include <platform/vtclient/client/turnrequest.h>
#include <platform/vtclient/ivtlosses.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

class IVtTic;
class Observable;

namespace vt {

/// The tics of a client and the links behind them: makes and ends both, and tells observers of tics, then
/// those of the client, what has changed.
///
/// Whoever is told may add and remove tics. A link that was dropped meanwhile lasts until the next turn.
class ClientTics final : private ClientLink::IHost {
  public:
    /// \a client is told of what the tics told. All that is passed outlives this.
    ClientTics(Observable& client, CallDepth& depth, TurnRequest& turn);
    ~ClientTics() override;
    ClientTics(const ClientTics&) = delete;
    ClientTics& operator=(const ClientTics&) = delete;

    /// Null, with a trace, for what cannot be mirrored.
    IVtTic* Add(const QString& spec, bool isLook);
    void Remove(IVtTic* tic);
    void RemoveAll();
    /// Ends the mirroring of \a node. Who observes the tics that end with it is told in the next turn.
    void Release(const values::TreeItem* node);
    bool AreAllEstablished() const;

    /// The server has welcomed this client: all is asked for.
    void Subscribe(ClientSession& session);
    /// The session is over: all turns stale, before anybody hears of it by other ways.
    void Lose();
    void SendEdits();
    /// Tells what waited for a turn.
    void OnTurn();

    bool HasUnanswered() const;
    /// Tells the client's observers if something was under way and nothing is any more.
    void TellAnswered();
    /// Tells who observes tics that have become established or ceased to be.
    void TellEstablished();
    /// What the client's observers were told of last.
    const VtLoss& LastLoss() const { return m_lastLoss; }

  private:
    void OnEdits() override;
    void OnAnswered() override { TellAnswered(); }
    void OnEstablished() override;
    void OnAbsent(ClientLink& link) override { TellTicsOf(link); }

    ClientLink* LinkFor(const QString& localPath, const QString& remotePath, bool isLook);
    void Drop(ClientLink* link);
    void TellTicsOf(ClientLink& link);
    void TellLosses();
    void TellNewTics();
    bool Has(const VtTic* tic) const;
    bool Has(const ClientLink* link) const;
    template <class Visit>
    void ForEachLink(const Visit& visit);

    Observable& m_client;
    CallDepth& m_depth;
    TurnRequest& m_turn;
    ClientSession* m_session = nullptr;  ///< while connected
    std::vector<std::unique_ptr<ClientLink>> m_links;
    std::vector<ClientLink*> m_room;                       ///< for those that are visited
    std::vector<std::unique_ptr<ClientLink>> m_deadLinks;  ///< may be telling right now
    std::vector<std::unique_ptr<VtTic>> m_tics;
    std::vector<VtTic*> m_newTics;  ///< established from their first moment on, which nobody was told
    bool m_hasReleased = false;
    bool m_hadUnanswered = false;
    VtLoss m_lastLoss;
};

}  // namespace vt
