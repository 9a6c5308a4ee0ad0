// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QTime>

#include <chrono>
#include <functional>

/// Time, and what is to be done later: the real one in the program, one that is turned by hand in tests. Main
/// thread.
class IClock {
  public:
    using Action = std::function<void()>;

    virtual ~IClock() = default;

    /// The time since some moment; never goes back.
    virtual std::chrono::milliseconds Now() const = 0;
    /// What the clock on the wall shows.
    virtual QTime TimeOfDay() const = 0;
    /// The same moment for people and programs elsewhere.
    virtual QDateTime Utc() const = 0;
    /// As the server's tree holds moments: "2026-11-22T14:03:21.000Z".
    QString UtcText() const { return Utc().toString(Qt::ISODateWithMs); }

    /// Runs \a action once, after \a delay, through the event loop, also for 0.
    /// \return a number, never 0, to cancel it with.
    virtual int After(std::chrono::milliseconds delay, Action action) = 0;
    /// Does nothing for a number whose action ran or was cancelled.
    virtual void Cancel(int number) = 0;
};
