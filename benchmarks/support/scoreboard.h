// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

#include <vector>

namespace bench {

/// One line of the table: a measured figure of ours, beside another figure or by itself, and its limit.
struct Row {
    enum ELimit { Information, AtMost, AtLeast };

    QString title;
    QString unit;
    double scale = 1.0;  ///< from what is measured to the unit
    QString ours;        ///< key of the figure
    QString peerName;    ///< empty: the limit is for ours itself, in the unit; else for the ratio ours/peer
    QString peer;        ///< key of the figure
    ELimit limit = Information;
    double bound = 0.0;
};

/// Collects figures over several rounds and prints what the rows say of their medians.
class Scoreboard {
  public:
    void Add(const QString& key, double figure) { m_figures[key].push_back(figure); }
    /// The difference of the newest figures of two others.
    void AddDifference(const QString& key, const QString& minuend, const QString& subtrahend);
    /// A measurement that failed: then the run has failed.
    void Fail(const QString& what);

    /// Prints the table; false if a limit is missed or a measurement failed.
    bool Print(const std::vector<Row>& rows) const;

  private:
    bool PrintRow(const Row& row) const;
    double Ratio(const Row& row) const;

    QMap<QString, std::vector<double>> m_figures;
    QStringList m_failures;
};

}  // namespace bench
