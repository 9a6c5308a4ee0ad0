// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtattemptlimiter.h>

#include <QtNetwork/QHostAddress>

#include <algorithm>
#include <utility>

// Said once more, where MinGW exports them.
constexpr decltype(VtAttemptLimiter::FreeFailures) VtAttemptLimiter::FreeFailures;
constexpr decltype(VtAttemptLimiter::FirstWait) VtAttemptLimiter::FirstWait;
constexpr decltype(VtAttemptLimiter::LongestWait) VtAttemptLimiter::LongestWait;
constexpr decltype(VtAttemptLimiter::MaxRecords) VtAttemptLimiter::MaxRecords;

VtAttemptLimiter::VtAttemptLimiter(Clock clock) : m_clock(std::move(clock)) {}

QString VtAttemptLimiter::HostOf(const QString& address) {
    constexpr int NetworkBytes = 8;
    QString host = address.left(address.lastIndexOf(QLatin1Char(':')));
    if (host.startsWith(QLatin1Char('['))) host = host.mid(1, host.indexOf(QLatin1Char(']')) - 1);
    const QHostAddress parsed(host);
    if (parsed.isNull()) return host;
    bool isIPv4 = false;
    const quint32 number = parsed.toIPv4Address(&isIPv4);  // also one that is written as IPv6
    if (isIPv4) return QHostAddress(number).toString();
    Q_IPV6ADDR bytes = parsed.toIPv6Address();
    std::fill(bytes.c + NetworkBytes, bytes.c + sizeof(bytes.c), quint8(0));
    return QHostAddress(bytes).toString();
}

VtAttemptLimiter::Time VtAttemptLimiter::WaitOf(const QString& address, const QString& user) {
    const auto found = m_records.find({HostOf(address), user});
    if (found == m_records.end()) return Time::zero();
    const Time now = m_clock();
    if (now - found->lastFailure > LongestWait) {
        m_records.erase(found);
        return Time::zero();
    }
    return std::max(Time::zero(), found->waitUntil - now);
}

void VtAttemptLimiter::Failed(const QString& address, const QString& user) {
    const Key key{HostOf(address), user};
    if (!m_records.contains(key) && m_records.size() >= MaxRecords) ForgetOldest();
    Record& record = m_records[key];
    record.lastFailure = m_clock();
    ++record.failures;
    constexpr int MostDoublings = 20;  // far beyond the longest wait
    const int doublings = std::min(record.failures - FreeFailures, MostDoublings);
    if (doublings >= 0)
        record.waitUntil = record.lastFailure + std::min(LongestWait, FirstWait * (1 << doublings));
}

void VtAttemptLimiter::Succeeded(const QString& address, const QString& user) {
    m_records.remove({HostOf(address), user});
}

void VtAttemptLimiter::ForgetOldest() {
    const auto oldest =
        std::min_element(m_records.begin(), m_records.end(),
                         [](const Record& a, const Record& b) { return a.lastFailure < b.lastFailure; });
    if (oldest != m_records.end()) m_records.erase(oldest);
}
