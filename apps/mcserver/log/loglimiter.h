// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/common/iclock.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <list>
#include <optional>

/// Keeps clients from filling the log, which goes to every other client, and strangers from filling the error
/// stream: each source has a number of lines, which comes back with time, all together have one too, and a
/// line that a source caused just before is not repeated. What is left out is counted, and told with the next
/// line of that source, or by itself if none follows. Main thread.
class LogLimiter {
  public:
    using Time = std::chrono::milliseconds;
    enum class ELine { News, Repetition };
    struct LeftOut {
        qint64 lines = 0;
        bool hasNews = false;  ///< one of them was more than a repetition
    };
    /// What was left out, and of whom most of it.
    using Tell = std::function<void(const LeftOut& leftOut, const QString& whose)>;

    struct Rates {
        int burst;           ///< lines of one source at once
        Time lineInterval;   ///< after which one more is allowed
        int totalBurst;      ///< lines of all sources at once
        Time totalInterval;  ///< after which one more is allowed
    };
    static constexpr Rates LogRates{100, Time(500), 400, Time(100)};

    static constexpr Time RepeatAfter{10'000};  ///< after which the same line may come again
    static constexpr Time TellAfter{15'000};    ///< after which what was left out is told by itself
    static constexpr int MaxSources = 256;      ///< that are remembered; beyond, the quietest is forgotten

    /// \a tell is told what no line tells of. The clock outlives the limiter.
    LogLimiter(IClock& clock, Tell tell, const Rates& rates = LogRates);

    /// The line to log for \a text of \a source: with how many were left out before it, if any were. None if
    /// this one is left out.
    std::optional<QString> Pass(const QString& source, const QString& text);
    /// The same without the line: what was left out before it.
    std::optional<LeftOut> Admit(const QString& source, const QString& text, ELine line = ELine::News);
    /// Tells how many were left out that no line told of, if any were.
    void TellLeftOut();

    static QString LeftOutText(qint64 leftOut, const QString& whose);

  private:
    struct Source {
        QString name;
        Time fullAt{};  ///< when all its lines will have come back
        Time lastTime{};
        QString lastText;
        LeftOut leftOut;       ///< and not told yet
        bool isHeard = false;  ///< a line of it has passed
    };
    using Sources = std::list<Source>;
    Sources::iterator Find(const QString& name);
    void ForgetQuietest();
    void LeaveOut(Source& source, ELine line);

    IClock& m_clock;
    Tell m_tell;
    Rates m_rates;
    Sources m_silent;  ///< of which no line has passed yet, the first of them first
    Sources m_heard;   ///< the others, that one first whose last line is the longest ago
    QHash<QString, Sources::iterator> m_byName;  ///< all of them
    Time m_fullAt{};                             ///< as for a source, for all together
    LeftOut m_leftOut;  ///< of all sources, also of those that are forgotten, and not told yet
    ClockTimer m_telling;
};
