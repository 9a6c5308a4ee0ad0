// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <utility>

/// Keeps an address that presented wrong credentials of a user waiting, longer with every failure; other
/// users at the same address do not wait. Main thread.
class MCS_CONNECTION_EXPORT VtAttemptLimiter {
  public:
    using Time = std::chrono::milliseconds;
    using Clock = std::function<Time()>;  ///< the time since some moment

    static constexpr int FreeFailures = 3;       ///< typing errors; after these the waiting starts
    static constexpr Time FirstWait{1000};       ///< doubles with every further failure
    static constexpr Time LongestWait{300'000};  ///< after it quiet, the failures are forgotten
    static constexpr int MaxRecords = 4096;      ///< that are remembered; beyond, the oldest is forgotten

    explicit VtAttemptLimiter(Clock clock);  ///< \a clock is asked at each call.

    /// How long \a user at \a address (host and port, as in VtPeer) has to wait; 0: it may try.
    Time WaitOf(const QString& address, const QString& user = QString());
    /// It presented a wrong credential.
    void Failed(const QString& address, const QString& user = QString());
    /// It is who it says: nothing is held against it.
    void Succeeded(const QString& address, const QString& user = QString());

    /// Whom \a address counts for: the host without the port, and for IPv6 the network, since one host has as
    /// many addresses there as it likes.
    static QString HostOf(const QString& address);

  private:
    struct Record {
        int failures = 0;
        Time lastFailure{};
        Time waitUntil{};
    };
    using Key = std::pair<QString, QString>;  ///< host and user
    void ForgetOldest();

    Clock m_clock;
    QHash<Key, Record> m_records;
};
