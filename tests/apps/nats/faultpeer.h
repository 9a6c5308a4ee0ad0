// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <chrono>

/// A server or a client over NATS in a process of its own, which a test keeps from running, or gives another
/// time of day. Killed with this object.
class FaultPeer {
  public:
    FaultPeer();

    /// Starts it as faultpeer says, with a clock that is \a wrong. False if it does not come up.
    bool Start(const QStringList& words, std::chrono::seconds wrong = std::chrono::seconds(0));
    /// Sets its clock, while it runs.
    void SetClock(std::chrono::seconds wrong);
    /// Keeps it from running, and lets it go on.
    void Freeze(bool isFrozen);

    /// What it says of itself: numbers by name.
    struct Account {
        int Of(const char* name) const;
        QStringList words;
    };
    Account Tell() { return Ask("tell"); }
    /// No more changes.
    Account Stop() { return Ask("stop"); }

  private:
    Account Ask(const QByteArray& line);

    QTemporaryDir m_folder;
    ChildProgram m_program{ChildProgram::EErrors::PassedOn};
};
