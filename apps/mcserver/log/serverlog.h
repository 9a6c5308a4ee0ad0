// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>
#include <apps/common/iclock.h>
#include <apps/mcserver/events/eventjournal.h>
#include <apps/mcserver/log/loglimiter.h>

#include <platform/vtclient/ivtaccess.h>

#include <QtCore/QString>

#include <functional>

class MCSStatus;

/// Whose event it is, where the code does not say it all.
struct LogOrigin {
    QString mpxOrv;             ///< the name of the MpxORV
    QString who;                ///< who caused it; the actor, if there is one, unless given
    bool isRepetition = false;  ///< an event has told it already, so it is only a line of the log
};

/// What happens at the server, the one road on which it is told: as an event, which programs understand, and
/// as one line each in the status value "LogMessage" with the time of day before it, and without it to a
/// sink, whose reader has a clock of its own. The table of codes says what is told where. Main thread.
class ServerLog {
  public:
    using Sink = std::function<void(const QString&)>;

    using Origin = LogOrigin;

    ServerLog(MCSStatus& status, IClock& clock, Sink sink);

    /// \a text has a code of an event.
    void Write(const CodedText& text, const Origin& origin = {});
    /// The same for what \a source, a client, caused and could cause again and again.
    /// False if it was left out.
    bool WriteFrom(const QString& source, const CodedText& text, const Origin& origin = {});

    /// \a peer does what happens from now on; empty: nobody from outside.
    void SetActor(const CodedText& peer);
    /// The same of a peer that people know by its MpxORV. Who that is is asked for when it is to be told,
    /// once: of most writes nothing is told.
    void SetActor(const VtPeer& peer, std::function<QString()> mpxOrv);
    /// What happens while \a isActing says so, and no peer acts, \a who does at the server itself.
    void SetLocalActor(const CodedText& who, std::function<bool()> isActing);
    const CodedText& GetActorText() const;
    /// The same in English.
    const QString& GetActor() const;
    /// By the \a code, such as ECode::TakenAwayBy, that the actor does it, for the end of a text; nothing
    /// while nobody does anything.
    CodedText ByActor(ECode code = ECode::By) const;

    EventJournal& GetJournal() { return m_journal; }

  private:
    void TellLine(const QString& text);
    void AddEvent(const CodedText& text, const QString& english, const Origin& origin);
    void TellLeftOut(const LogLimiter::LeftOut& leftOut, const QString& whose);

    MCSStatus& m_status;
    IClock& m_clock;
    Sink m_sink;
    EventJournal m_journal;
    LogLimiter m_limiter;
    LogLimiter m_eventLimiter;  ///< of what the log does not show, so that it takes no lines from it
    void LearnActor() const;

    bool IsLocal() const;

    CodedText m_localActor;
    QString m_localName;
    std::function<bool()> m_isLocalActing;
    VtPeer m_actorPeer;
    mutable std::function<QString()> m_askForMpxOrv;  ///< empty once it is known who acts
    mutable CodedText m_actor;
    mutable QString m_actorName;
    mutable QString m_actorPeerName;  ///< what an event has that names an MpxORV already
};
