// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/clock/iclock.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <optional>

/// Keeps clients from filling the log, which goes to every other client: each source has a number of lines,
/// which comes back with time, all together have one too, and a line that a source caused just before is not
/// repeated. Main thread.
class LogLimiter {
  public:
    using Time = std::chrono::milliseconds;

    static constexpr int Burst = 100;           ///< lines of one source at once
    static constexpr Time LineInterval{500};    ///< after which one more is allowed
    static constexpr int TotalBurst = 400;      ///< lines of all sources at once
    static constexpr Time TotalInterval{100};   ///< after which one more is allowed
    static constexpr Time RepeatAfter{10'000};  ///< after which the same line may come again
    static constexpr int MaxSources = 256;      ///< that are remembered; beyond, the quietest is forgotten

    explicit LogLimiter(IClock& clock) : m_clock(clock) {}

    /// The line to log for \a text of \a source: with how many were left out before it, if any were. None if
    /// this one is left out.
    std::optional<QString> Pass(const QString& source, const QString& text);

  private:
    struct Source {
        Time fullAt{};  ///< when all its lines will have come back
        Time lastTime{};
        QString lastText;
        int leftOut = 0;
    };
    Source& Find(const QString& name);

    IClock& m_clock;
    QHash<QString, Source> m_sources;
    Time m_fullAt{};  ///< as for a source, for all together
};
