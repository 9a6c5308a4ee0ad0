// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/mpxorv/mpxorv.h>

#include <devicecontrol/multichannelserver/common/mcsclientatserver.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

class ICfg;
class JobControl;
class MCSConfigData;
class MCSStatus;
class ServerLog;

/// All MpxORVs of the server: the static ones of its settings, and the dynamic ones that clients ask for,
/// which go when their last client is gone. Keeps the counts in the status. Main thread.
class MpxOrvRegistry {
  public:
    struct Client {
        int session = 0;
        QString application;  ///< shown among the connected clients
        QString user;         ///< as whom it was admitted
        CodedText peer;       ///< who it is, for the log
        QString source;       ///< whom its lines in the log count for
    };

    static constexpr int MaxDynamic = 1000;   ///< as many as the status can count
    static constexpr int MaxPerSession = 32;  ///< more than any application has use for

    MpxOrvRegistry(MCSConfigData& config, MCSStatus& status, JobControl& jobs, ServerLog& log, IClock& clock);
    ~MpxOrvRegistry();
    MpxOrvRegistry(const MpxOrvRegistry&) = delete;
    MpxOrvRegistry& operator=(const MpxOrvRegistry&) = delete;

    /// Makes the static MpxORVs that \a cfg, the root of the configuration, lists.
    void LoadStatic(ICfg& cfg);
    /// Writes their policies and comments to \a cfg, without committing.
    void SaveStatic(ICfg& cfg);

    MpxOrv* Find(EMpxOrvKind kind, const QString& name) const;
    /// Makes \a client a client of the MpxORV, once more, which is created if it is dynamic and not there.
    /// \return why not, one line; empty if it is now.
    CodedText Join(EMpxOrvKind kind, const QString& name, const Client& client);
    /// Why the session of \a user cannot become, or be once more, a client of \a mpxOrv; empty if it can.
    CodedText JoinRefusal(const MpxOrv& mpxOrv, int session, const QString& user) const;
    /// The name of the MpxORV that the session uses; empty if it uses none, or several.
    QString NameOfTheOneUsedBy(int session) const;
    /// Takes one Join back.
    void Release(EMpxOrvKind kind, const QString& name, int session);
    /// The session has ended.
    void RemoveSession(int session);

  private:
    struct Entry {
        std::unique_ptr<MpxORVHandle> handle;  ///< of a dynamic one; deletes its node, after the MpxORV
        std::unique_ptr<MpxOrv> mpxOrv;
    };

    CodedText CreateDynamic(const QString& name, const Client& client);
    int CountOf(EMpxOrvKind kind) const;
    int CountUsedBy(int session) const;
    void ShowCounts();
    /// Removes dynamic MpxORVs without clients, later: whoever tells that a client went may be in the middle
    /// of telling about the MpxORV itself.
    void RemoveAbandonedSoon();
    void RemoveAbandoned();

    MCSConfigData& m_config;
    MCSStatus& m_status;
    JobControl& m_jobs;
    ServerLog& m_log;
    ClockTimer m_removalTimer;
    MCSClientAtServer m_client;
    std::vector<Entry> m_entries;
};
