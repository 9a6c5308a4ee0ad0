// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>
#include <apps/mcserver/log/loglimiter.h>

#include <platform/app/errorhandler.h>

#include <functional>

/// Keeps strangers from filling the server's error stream, and with it a journal: while it lives, of what
/// they cause so many lines are traced as whoever looks for a fault can read, and the others are counted.
/// Other traces go their way untouched. Main thread, where everything happens that peers cause.
class PeerTraces {
  public:
    using Sink = std::function<void(const TraceRecord&)>;

    /// 2 kB a second at most, with lines of the greatest length.
    static constexpr LogLimiter::Rates Rates{20, LogLimiter::Time(2000), 60, LogLimiter::Time(500)};
    static constexpr int MaxLength = 240;  ///< UTF-16 code units of a message

    /// \a sink gets what passes. The clock outlives this.
    explicit PeerTraces(IClock& clock, Sink sink = ErrorHandler::LogRecord);
    /// Tells what has been left out until now.
    ~PeerTraces();
    PeerTraces(const PeerTraces&) = delete;
    PeerTraces& operator=(const PeerTraces&) = delete;

  private:
    void Pass(const TraceRecord& record);

    Sink m_sink;
    LogLimiter m_limiter;
};
