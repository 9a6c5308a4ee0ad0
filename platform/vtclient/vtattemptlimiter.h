// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <functional>

/// Keeps an address that presented wrong credentials waiting, longer with every failure. Main thread.
class MCS_CONNECTION_EXPORT VtAttemptLimiter {
  public:
    using Clock = std::function<qint64()>;  ///< ms, from any moment on

    static constexpr int FreeFailures = 3;         ///< typing errors; after these the waiting starts
    static constexpr qint64 FirstWait = 1000;      ///< ms; doubles with every further failure
    static constexpr qint64 LongestWait = 300000;  ///< ms; after it quiet, the failures are forgotten
    static constexpr int MaxAddresses = 4096;      ///< that are remembered; beyond, the oldest is forgotten

    explicit VtAttemptLimiter(Clock clock);

    /// For how many ms \a address (host and port, as in VtPeer) has to wait; 0: it may try.
    qint64 WaitOf(const QString& address);
    void Failed(const QString& address);
    void Succeeded(const QString& address);

    /// Whom \a address counts for: the host without the port, and for IPv6 the network, since one host has as
    /// many addresses there as it likes.
    static QString HostOf(const QString& address);

  private:
    struct Record {
        int failures = 0;
        qint64 lastFailure = 0;
        qint64 waitUntil = 0;
    };
    void ForgetOldest();

    Clock m_clock;
    QHash<QString, Record> m_records;
};
