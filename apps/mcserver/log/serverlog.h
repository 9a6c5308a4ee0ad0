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

  private:
    MCSStatus& m_status;
    IClock& m_clock;
    Sink m_sink;
    LogLimiter m_limiter;
};
