// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <list>
#include <optional>

/// Keeps messages that repeat out of the server's error stream, which fills a journal: a data module that
/// fails does so with every poll, a hundred times a second. Used by one thread at a time.
class MessageLimiter {
  public:
    using Time = std::chrono::milliseconds;

    static constexpr Time RepeatAfter{10'000};  ///< after which the same message may come again
    static constexpr int MaxRemembered =
        4096;  ///< more than modules can be polled; beyond, the oldest is forgotten

    /// What to write for \a text at \a now, of a clock that never goes back: with how often it was left out
    /// before, if it was. None if it was written just before.
    std::optional<QString> Pass(const QString& text, Time now);

    /// From now on Qt's messages of this process pass through one, from all threads; unless MCS_TRACE says
    /// what is wanted, since who looks for something wants to see it each time.
    static void Install();

  private:
    struct Last {
        QString text;
        Time time{};
        int leftOut = 0;
        bool isWritten = false;
    };
    std::list<Last>::iterator Find(const QString& text);

    std::list<Last> m_last;                              ///< the oldest first
    QHash<QString, std::list<Last>::iterator> m_byText;  ///< all of them
};
