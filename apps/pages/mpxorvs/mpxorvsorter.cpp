// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvsorter.h>

#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvorder.h>
#include <apps/pages/mpxorvs/mpxorvtable.h>

MpxOrvSorter::MpxOrvSorter(MpxOrvTable& table, QObject* parent)
    : QSortFilterProxyModel(parent), m_table(table) {
    setSourceModel(&table);
    setDynamicSortFilter(true);
    sort(mpxorvcells::Kind);
}

void MpxOrvSorter::SetText(const QString& text) {
    m_text = text.trimmed();
    invalidateFilter();
}

// Descending, the base class asks with both sides exchanged; what is the same whichever way has to answer
// exchanged then.
bool MpxOrvSorter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const MpxOrvContent& a = m_table.GetContent(left.row());
    const MpxOrvContent& b = m_table.GetContent(right.row());
    const bool isAscending = sortOrder() == Qt::AscendingOrder;
    if (a.IsMaster() != b.IsMaster()) return isAscending ? a.IsMaster() : b.IsMaster();
    const int byColumn = mpxorvorder::CompareIn(left.column(), a, b);
    if (byColumn != 0) return byColumn < 0;
    const int byDefault = mpxorvorder::Compare(a, b);
    return isAscending ? byDefault < 0 : byDefault > 0;
}

bool MpxOrvSorter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    if (m_text.isEmpty()) return true;
    const MpxOrvContent& content = m_table.GetContent(row);
    for (int column = 0; column < mpxorvcells::CountColumns; ++column)
        if (mpxorvcells::Text(content, column).contains(m_text, Qt::CaseInsensitive)) return true;
    return false;
}
