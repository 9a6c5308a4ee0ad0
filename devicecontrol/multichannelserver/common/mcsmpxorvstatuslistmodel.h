// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

/// A row for each MpxORV below the nodes that it watches: name, operation type, clients and comment, with a
/// lamp beside the name. Rows come, change and go with the tree. GUI thread only.
///
/// The texts are what the tree says, of any length and possibly with markup: a view shows them as plain text,
/// also in its tool tips (platform/widgets/plaintextdelegate.h).
class MCS_COMMON_EXPORT MCSMpxORVStatusListModel : public QAbstractTableModel {  // fixed: virtual-order
    Q_OBJECT

  public:
    explicit MCSMpxORVStatusListModel(QObject* parent = nullptr);
    ~MCSMpxORVStatusListModel() override;

    /// Watches the node at \a path as well. \return false if there is none.
    virtual bool addMpxORVs_ValuePath(const QString& path);
    virtual void removeAllMpxORVs_ValuePaths();  ///< Watches nothing any more: the table is empty.

    /// The path of the MpxORV in \a row; empty for a row that is not there.
    QString getMpxORV_ValuePath(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    class Implementation;
    friend class MCSMpxORVStatusListDisplay;

    /// While views are told of rows that went: whether they are told of more at once.
    bool WillMoreGo() const;

    std::unique_ptr<Implementation> m_implementation;
};
