// SPDX-License-Identifier: Apache-2.0
#include "scoreboard.h"

#include "statistics.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

const char* Verdict(const Row& row, double figure) {
    if (row.limit == Row::Information) return "";
    const bool isWithin = row.limit == Row::AtMost ? figure <= row.bound : figure >= row.bound;
    return isWithin ? "ok" : "OVER";
}

QByteArray LimitText(const Row& row) {
    if (row.limit == Row::Information) return "-";
    return (row.limit == Row::AtMost ? "<= " : ">= ") + QByteArray::number(row.bound, 'f', 2);
}

}  // namespace

void Scoreboard::AddDifference(const QString& key, const QString& minuend, const QString& subtrahend) {
    const std::vector<double> first = m_figures.value(minuend);
    const std::vector<double> second = m_figures.value(subtrahend);
    if (!first.empty() && !second.empty()) Add(key, first.back() - second.back());
}

void Scoreboard::Fail(const QString& what) {
    std::fprintf(stderr, "\n%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(what));
    m_failures << what;
}

bool Scoreboard::Print(const std::vector<Row>& rows) const {
    std::printf("%-47s %11s %-6s  %-22s %11s %8s %9s\n", "case", "ours", "", "peer", "peer's", "ratio",
                "limit");
    bool allWithin = m_failures.isEmpty();
    for (const Row& row : rows)
        allWithin = PrintRow(row) && allWithin;
    for (const QString& failure : m_failures)
        std::printf("FAILED  %s\n", qPrintable(failure));
    return allWithin;
}

bool Scoreboard::PrintRow(const Row& row) const {
    const bool hasPeer = !row.peerName.isEmpty();
    if (!m_figures.contains(row.ours)) return true;  // left out, or failed and counted as that
    const double ours = Median(m_figures.value(row.ours)) * row.scale;
    std::printf("%-47s %11.3f %-6s  ", qPrintable(row.title), ours, qPrintable(row.unit));
    if (hasPeer && !m_figures.contains(row.peer)) {
        std::printf("%-22s %11s\n", qPrintable(row.peerName), "absent");
        return true;
    }
    const double judged = hasPeer ? Ratio(row) : ours;
    const char* const verdict = Verdict(row, judged);
    if (hasPeer)
        std::printf("%-22s %11.3f %8.3f", qPrintable(row.peerName),
                    Median(m_figures.value(row.peer)) * row.scale, judged);
    else
        std::printf("%-22s %11s %8s", "-", "", "");
    std::printf(" %9s  %s\n", LimitText(row).constData(), verdict);
    return qstrcmp(verdict, "OVER") != 0;
}

// Round by round, since the machine changes its pace from round to round.
double Scoreboard::Ratio(const Row& row) const {
    const std::vector<double> ours = m_figures.value(row.ours);
    const std::vector<double> peer = m_figures.value(row.peer);
    if (ours.size() != peer.size()) return Median(ours) / Median(peer);
    std::vector<double> ratios(ours.size());
    std::transform(ours.begin(), ours.end(), peer.begin(), ratios.begin(),
                   [](double a, double b) { return a / b; });
    return Median(ratios);
}

}  // namespace bench
