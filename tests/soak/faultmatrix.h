// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <vector>

namespace soak {

/// Whether a fault has to be noticed.
enum class EAlarm { Always, Never, Perhaps };

/// What became of one fault, each time that a module had it.
struct FaultRow {
    QString fault;
    EAlarm alarm = EAlarm::Always;
    int episodes = 0;
    int mendedAtOnce = 0;  ///< by the operator's first attempt after it was over
    qint64 longestMendingMs = 0;
    std::map<QString, int> errors;  ///< how often each text was reported
};

/// The faults, and what the run found out about each.
class FaultMatrix {
  public:
    /// Delays are chosen by the \a responseTimeout in ms. The last row is the power cut, which befalls all
    /// modules together.
    explicit FaultMatrix(int responseTimeout);

    static constexpr int NoFault = 0;
    int CountFaults() const { return static_cast<int>(m_rows.size()) - 1; }
    int PowerCut() const { return CountFaults(); }
    FaultRow& operator[](int row) { return m_rows[static_cast<std::size_t>(row)]; }

    qint64 Episodes() const;
    qint64 Errors() const;
    /// As a table in Markdown.
    QString ToText() const;

  private:
    std::vector<FaultRow> m_rows;
};

}  // namespace soak
