// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QString>

class MpxOrvTable;

/// The MpxORVs in the order of a column, with the job master always on top, and of them those in which a text
/// occurs. GUI thread.
class MpxOrvSorter : public QSortFilterProxyModel {
    Q_OBJECT

  public:
    /// \a table is not owned and outlives the sorter.
    explicit MpxOrvSorter(MpxOrvTable& table, QObject* parent = nullptr);

    /// Shows those only that have \a text in one of their cells, in upper or lower case; empty: all.
    void SetText(const QString& text);

  protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

  private:
    MpxOrvTable& m_table;
    QString m_text;
};
