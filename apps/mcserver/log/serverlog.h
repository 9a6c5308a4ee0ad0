// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>
#include <apps/mcserver/log/loglimiter.h>

#include <QtCore/QString>

#include <functional>

class MCSStatus;

/// What happens at the server, one line each: in the status value "LogMessage" with the time of day before
/// it, and without it to a sink, whose reader has a clock of its own. Main thread.
class ServerLog {
  public:
    using Sink = std::function<void(const QString&)>;

    ServerLog(MCSStatus& status, IClock& clock, Sink sink);

    void Write(const QString& text);
    /// The same for what \a source, a client, caused and could cause again and again.
    void WriteFrom(const QString& source, const QString& text);

    /// \a name, a client, does what happens from now on; empty: nobody from outside.
    void SetActor(const QString& name) { m_actor = name; }
    QString GetActor() const { return m_actor; }
    /// ", WHAT by NAME", for the end of a text on what a client does to others; empty while none does
    /// anything.
    QString ByActor(const QString& what = QString()) const;

  private:
    MCSStatus& m_status;
    IClock& m_clock;
    Sink m_sink;
    LogLimiter m_limiter;
    QString m_actor;
};
