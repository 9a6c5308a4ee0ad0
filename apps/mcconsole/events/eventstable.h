// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTableView>

class EventsDelegate;

/// A table in which rows are added at the end while somebody looks: those rows are laid out and drawn, and
/// not all that are in sight. Whatever else changes is laid out as a whole. GUI thread.
class EventsTable : public QTableView {
    Q_OBJECT

  public:
    explicit EventsTable(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;
    void doItemsLayout() override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

  private:
    void OnRowsInserted(const QModelIndex& parent, int first, int last);
    void LayOutAll() { m_isAppendedOnly = false; }
    void LengthenRange();

    EventsDelegate* m_delegate;
    int m_laidOut = 0;              ///< rows
    bool m_isAppendedOnly = false;  ///< since then
};
