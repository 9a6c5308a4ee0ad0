// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>

#include <vector>

/// The MpxORVs that ignore the suppression, and who switched that. GUI thread.
class IgnoringModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Name, SwitchedBy, Since, ColumnCount };

    explicit IgnoringModel(QObject* parent = nullptr);

    /// Looks at the MpxORVs below \a staticPath and below \a dynamicPath; empty: those are not known here.
    void Look(const QString& staticPath, const QString& dynamicPath);
    /// Whether there may be others who ignore it.
    bool IsPartial() const { return m_isPartial; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    struct Row {
        QString name;
        QString switchedBy;
        QString since;

        bool operator==(const Row& other) const {
            return name == other.name && switchedBy == other.switchedBy && since == other.since;
        }
    };

    static void Collect(const QString& path, std::vector<Row>* rows);

    std::vector<Row> m_rows;
    bool m_isPartial = true;
};
