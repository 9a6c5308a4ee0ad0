// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/columnfit.h>

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtGui/QResizeEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <utility>

ColumnFit::ColumnFit(QTableView& view, std::vector<int> leastImportant)
    : QObject(&view), m_view(view), m_viewport(view.viewport()), m_leastImportant(std::move(leastImportant)) {
    m_viewport->installEventFilter(this);
}

// Events still come while the view is being destroyed, and is none any more.
bool ColumnFit::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_viewport && !m_isFitting && IsAnotherWidth(*event)) Fit();
    return QObject::eventFilter(watched, event);
}

/// A bar that comes or goes makes the view lower or higher only, and fitting may have it come and go: it
/// would never end.
bool ColumnFit::IsAnotherWidth(const QEvent& event) {
    if (event.type() == QEvent::Show) return true;
    if (event.type() != QEvent::Resize) return false;
    const auto& resized = static_cast<const QResizeEvent&>(event);
    return resized.size().width() != resized.oldSize().width();
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

/// The header lets the last column grow, and does not make it narrower than it was when it was none.
void ColumnFit::NarrowLast() {
    QHeaderView& header = *m_view.horizontalHeader();
    const int lack = header.length() - m_viewport->width();
    int last = header.count() - 1;
    while (last > 0 && header.isSectionHidden(header.logicalIndex(last)))
        --last;
    const int column = header.logicalIndex(last);
    if (lack > 0)
        header.resizeSection(column, qMax(header.sectionSize(column) - lack, header.sectionSizeHint(column)));
    QMetaObject::invokeMethod(&m_view, "updateGeometries", Qt::DirectConnection);
}

void ColumnFit::Fit() {
    const QScopedValueRollback<bool> fitting(m_isFitting, true);
    // The view has looked whether it needs a bar while the last column was still as wide as before.
    QTimer::singleShot(0, &m_view, [this] { NarrowLast(); });
    for (const int column : m_leastImportant)
        m_view.setColumnHidden(column, false);
    if (m_narrowed >= 0) m_view.setColumnWidth(std::exchange(m_narrowed, -1), m_widthBefore);
    for (const int column : m_leastImportant) {
        if (WidthNeeded() <= m_viewport->width()) return;
        m_view.setColumnHidden(column, true);
    }
    const int lack = WidthNeeded() - m_viewport->width();
    if (lack <= 0) return;
    m_narrowed = m_view.horizontalHeader()->logicalIndex(0);
    m_widthBefore = m_view.columnWidth(m_narrowed);
    m_view.setColumnWidth(m_narrowed, m_widthBefore - lack);
}
