// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/lamplook.h>
#include <apps/pages/suppression/suppressionstate.h>

#include <QtCore/QAbstractTableModel>

#include <vector>

/// The inputs of all modules as rows: a lamp that differs in shape, the frequency, since when it is keyed and
/// who was kept from it. GUI thread.
class InputStatusModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Module, Input, Lamp, Frequency, KeyedSince, LastBlanked, ColumnCount };

    /// Numbers and keys, for sorting and filters: hertz in the column of frequencies, else the text.
    static constexpr int SortRole = Qt::UserRole;

    explicit InputStatusModel(QObject* parent = nullptr);

    void Show(const SuppressionState& state);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    struct Row {
        QString module;
        bool isLive = false;
        bool isUnsupervised = false;  ///< nobody else watches its frequency either
        InputStatus input;

        bool operator==(const Row& other) const {
            return module == other.module && isLive == other.isLive &&
                   isUnsupervised == other.isUnsupervised && input == other.input;
        }
    };

    static lamplook::ELamp LampOf(const Row& row);
    static QString TextOf(const Row& row, int column);

    std::vector<Row> m_rows;
};
