// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/frequencybook.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>

#include <vector>

/// Favourites while an operator edits them: a name and a frequency each, in an order of the operator's. GUI
/// thread.
class FavouritesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Name, Frequency, ColumnCount };

    explicit FavouritesModel(std::vector<FrequencyBook::Favourite> favourites, QObject* parent = nullptr);

    const std::vector<FrequencyBook::Favourite>& GetFavourites() const { return m_favourites; }
    /// At the end, without a name. Its row; -1 if there are as many as there may be.
    int Add(double hz);
    void Remove(int row);
    /// Up if \a count is negative. The row where it is then.
    int Move(int row, int count);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  Q_SIGNALS:
    /// Something was entered; \a reason says why it was refused, and is empty if it is taken.
    void Entered(const QString& reason);

  private:
    QString Enter(FrequencyBook::Favourite& favourite, int column, const QString& text);

    std::vector<FrequencyBook::Favourite> m_favourites;
};
