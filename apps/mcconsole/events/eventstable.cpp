// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventstable.h>

#include <apps/mcconsole/events/eventsdelegate.h>
#include <apps/mcconsole/events/stillscrollbar.h>

#include <QtGui/QPaintEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

EventsTable::EventsTable(QWidget* parent) : QTableView(parent), m_delegate(new EventsDelegate(this)) {
    setVerticalScrollBar(new StillScrollBar(Qt::Vertical, this));
    setItemDelegate(m_delegate);
    connect(horizontalHeader(), &QHeaderView::geometriesChanged, this, &EventsTable::LayOutAll);
}

void EventsTable::setModel(QAbstractItemModel* model) {
    if (this->model() != nullptr) disconnect(this->model(), nullptr, this, nullptr);
    QTableView::setModel(model);
    LayOutAll();
    if (model == nullptr) return;
    connect(model, &QAbstractItemModel::rowsInserted, this, &EventsTable::OnRowsInserted);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EventsTable::LayOutAll);
    connect(model, &QAbstractItemModel::rowsMoved, this, &EventsTable::LayOutAll);
    connect(model, &QAbstractItemModel::modelReset, this, &EventsTable::LayOutAll);
    connect(model, &QAbstractItemModel::layoutChanged, this, &EventsTable::LayOutAll);
    connect(model, &QAbstractItemModel::columnsInserted, this, &EventsTable::LayOutAll);
    connect(model, &QAbstractItemModel::columnsRemoved, this, &EventsTable::LayOutAll);
}

void EventsTable::OnRowsInserted(const QModelIndex& parent, int first, int last) {
    const int before = model()->rowCount() - (last - first + 1);
    if (parent.isValid() || first != before) LayOutAll();
}

// The base class has rows drawn that are only beside what is to be drawn.
void EventsTable::paintEvent(QPaintEvent* event) {
    m_delegate->BeginDrawing(event->region());
    QTableView::paintEvent(event);
    m_delegate->EndDrawing();
}

// The keys begin at the end of what is in sight, and not at the first row, which may be far away. Whoever
// comes to the table by Tab is led there as well.
QModelIndex EventsTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (model() == nullptr || currentIndex().isValid()) return QTableView::moveCursor(action, modifiers);
    const int below = rowAt(viewport()->height() - 1);
    return model()->index(below >= 0 ? below : model()->rowCount() - 1, 0);
}

// The base class draws all that is in sight, however few rows were added.
void EventsTable::doItemsLayout() {
    const int rows = model() != nullptr ? model()->rowCount() : 0;
    const int first = m_laidOut;
    const bool isAppendedOnly = m_isAppendedOnly && first <= rows;
    m_laidOut = rows;
    m_isAppendedOnly = true;
    if (!isAppendedOnly) return QTableView::doItemsLayout();
    LengthenRange();
    if (first == rows) return;
    const int top = rowViewportPosition(first);
    const int bottom = rowViewportPosition(rows - 1) + rowHeight(rows - 1);
    viewport()->update(QRect(0, top, viewport()->width(), bottom - top) & viewport()->rect());
}

// All else stays where it is once there is something to scroll.
void EventsTable::LengthenRange() {
    QScrollBar* const bar = verticalScrollBar();
    if (bar->maximum() == 0 || verticalScrollMode() != ScrollPerPixel) return updateGeometries();
    bar->setMaximum(verticalHeader()->length() - viewport()->height());
}
