// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/mpxorv/mpxorvfacts.h>
#include <apps/mcserver/mpxorv/mpxorvpath.h>
#include <apps/mcserver/mpxorv/mpxorvrequests.h>

#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <platform/values/observation.h>

#include <QtCore/QString>

#include <map>

class MpxOrv;

/// Is told what the clients of an MpxORV want, and what they may. Main thread.
class IMpxOrvListener {
  public:
    virtual ~IMpxOrvListener() = default;
    virtual void OnRequest(MpxOrv& mpxOrv, ERequest request) = 0;
    virtual void OnPoliciesChanged(MpxOrv& mpxOrv) = 0;
    virtual void OnBlankingSwitched(MpxOrv& mpxOrv) = 0;
};

/// One multiplexed ORV: its status, its policies and its requests below its node, and who its clients are.
/// The node is there before and goes after it. Main thread.
class MpxOrv : public IObserver {
  public:
    /// What a new MpxORV starts with.
    struct Defaults {
        MCSPolicySet policies;
        QString comment;
        double frequency = MpxOrvRequests::MinFrequency;  ///< Hz
        bool obeysBlanking = true;
    };

    MpxOrv(EMpxOrvKind kind, const QString& name, const Defaults& defaults, IMpxOrvListener& listener);
    ~MpxOrv() override;
    MpxOrv(const MpxOrv&) = delete;
    MpxOrv& operator=(const MpxOrv&) = delete;

    EMpxOrvKind GetKind() const { return m_kind; }
    QString GetName() const { return m_name; }
    /// Whose a dynamic MpxORV is; empty for a static one.
    QString GetUser() const { return m_user; }
    void SetUser(const QString& user) { m_user = user; }
    MCSMpxORVStatus& GetStatus() { return m_status; }
    MpxOrvFacts& GetFacts() { return m_facts; }
    const MCSPolicySet& GetPolicies() const { return m_policies; }
    bool Has(const MCSPolicy& policy) const { return m_policies.Contains(policy); }
    /// The names of the policies that it has lost since this was asked last; of those that it got in \a
    /// given.
    QStringList TakeChangedPolicies(QStringList* given);
    MpxOrvRequests& GetRequests() { return m_requests; }
    /// Whether frequencies that ground transmitters use are kept from it; switched in the tree.
    /// \a does is what it does, for people.
    void ShowOperationType(const CodedText& does);

    bool ObeysBlanking() const;
    void SetObeysBlanking(bool obeys);
    /// Who it is to the blanking.
    BlankingClient& GetBlankingClient() { return m_blankingClient; }

    /// The name of that switch in the tree.
    static QLatin1String BlankingName() { return QLatin1String("Blanking"); }

    /// A session uses the MpxORV, once more; \a application is shown. True if it is a new client.
    bool AddClient(int session, const QString& application);
    /// It uses it once less. True if it is no client any more.
    bool ReleaseClient(int session);
    /// It is no client any more, however often it used it. False if it was none.
    bool RemoveClient(int session);
    bool HasClient(int session) const { return m_clients.count(session) != 0; }
    bool HasClients() const { return !m_clients.empty(); }

    void Update(Observable* source, TChangeCode code) override;

  private:
    EMpxOrvKind m_kind;
    QString m_name;
    QString m_user;
    IMpxOrvListener& m_listener;
    MpxOrvFacts m_facts;  ///< in the tree before what it says of the status
    MCSMpxORVStatus m_status;
    MCSPolicySet m_policies;
    MCSPolicySet m_hadPolicies;  ///< when TakeChangedPolicies() was called
    MpxOrvRequests m_requests;
    BlankingClient m_blankingClient;
    std::map<int, int> m_clients;  ///< session to how often it uses this
    Observation<values::Value<bool>> m_pBlanking;
};
