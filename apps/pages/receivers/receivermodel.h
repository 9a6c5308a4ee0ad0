// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>

#include <array>
#include <vector>

namespace values {
class Node;
}

/// The receivers of a server's device as rows: whether each is there, since when and why not, and what it
/// receives. GUI thread.
class ReceiverModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Receiver, State, Since, Frequency, Mode, Strength, Reason, ColumnCount };

    explicit ReceiverModel(QObject* parent = nullptr);

    /// Looks at the receivers below the node of the status at \a path; empty: there are none.
    void Look(const QString& path);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    struct Row {
        int number = 0;
        QString name;  ///< maker and model
        ESeverity severity = ESeverity::Unknown;
        std::array<QString, ColumnCount> texts;

        bool operator==(const Row& other) const {
            return number == other.number && name == other.name && severity == other.severity &&
                   texts == other.texts;
        }
    };
    static Row RowOf(const values::Node& receiver);

    std::vector<Row> m_rows;
};
