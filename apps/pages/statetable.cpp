// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/statetable.h>

#include <platform/widgets/plaintextdelegate.h>

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

QTableView* statetable::New(QWidget& parent, const char* name, const QString& spoken) {
    auto* const table = new QTableView(&parent);
    table->setObjectName(QLatin1String(name));
    table->setAccessibleName(spoken);
    table->setItemDelegate(new PlainTextDelegate(table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setMinimumHeight(RowHeight * (LeastRows + 1));
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(RowHeight);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}
