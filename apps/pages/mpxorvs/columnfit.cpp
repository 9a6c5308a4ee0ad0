// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/columnfit.h>

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <utility>

ColumnFit::ColumnFit(QTableView& view, std::vector<int> leastImportant)
    : QObject(&view), m_view(view), m_viewport(view.viewport()), m_leastImportant(std::move(leastImportant)) {
    m_viewport->installEventFilter(this);
}

// Events still come while the view is being destroyed, and is none any more.
bool ColumnFit::eventFilter(QObject* watched, QEvent* event) {
    const bool isSized = event->type() == QEvent::Resize || event->type() == QEvent::Show;
    if (watched == m_viewport && isSized && !m_isFitting) Fit();
    return QObject::eventFilter(watched, event);
}

/// The last column takes what is left over, and needs no more than its title.
int ColumnFit::WidthNeeded() const {
    const QHeaderView& header = *m_view.horizontalHeader();
    std::vector<int> seen;
    for (int place = 0; place < header.count(); ++place)
        if (!header.isSectionHidden(header.logicalIndex(place))) seen.push_back(header.logicalIndex(place));
    int width = 0;
    for (const int column : seen)
        width += column == seen.back() ? header.sectionSizeHint(column) : header.sectionSize(column);
    return width;
}

void ColumnFit::Fit() {
    const QScopedValueRollback<bool> fitting(m_isFitting, true);
    for (const int column : m_leastImportant)
        m_view.setColumnHidden(column, false);
    for (const int column : m_leastImportant) {
        if (WidthNeeded() <= m_viewport->width()) return;
        m_view.setColumnHidden(column, true);
    }
}
