// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QStandardItemModel>

#include <functional>

namespace values {
class Node;
class TreeItem;
}  // namespace values

/// A tree as rows of name, type and content. Rows follow the tree when Follow() is called; contents are read
/// whenever they are drawn. GUI thread only.
class PathModel final : public QStandardItemModel {
    Q_OBJECT

  public:
    enum EColumn { NameColumn, TypeColumn, ContentColumn, ColumnCount };
    enum ERole {
        PathRole = Qt::UserRole,  ///< where the server has it
        KindRole                  ///< content::EContent
    };
    /// More rows than that nobody reads.
    static constexpr int MostRows = 20000;

    using Translate = std::function<QString(const QString& path)>;
    /// \a toServer and \a toLocal tell where the server has what is here, and the other way round.
    PathModel(Translate toServer, Translate toLocal, QObject* parent);

    /// Brings the rows up to what is below \a top; null: none. Rows that stay are not touched.
    void Follow(const values::Node* top);
    /// Whether there is more than is shown.
    bool IsCut() const { return m_isCut; }
    /// The row of a path; invalid if there is none.
    QModelIndex IndexOf(const QString& serverPath) const;

    QVariant data(const QModelIndex& index, int role) const override;

  private:
    void FollowChildren(QStandardItem& parent, const values::Node& node, int depth);
    QStandardItem& PlaceRow(QStandardItem& parent, int row, const values::TreeItem& item);
    QVariant ContentAt(const QModelIndex& index) const;

    Translate m_toServer;
    Translate m_toLocal;
    int m_count = 0;
    bool m_isCut = false;
};
