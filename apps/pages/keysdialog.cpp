// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/keysdialog.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int LinesSeen = 15;
constexpr int BesideTable = 60;  // pixels: margins, and a bar to scroll by

/// As it is read, without the mark of its own key.
QString CaptionOf(const QAction& action) {
    QString text = action.text();
    text.remove(QLatin1Char('&'));
    return text.endsWith(QLatin1String("...")) ? text.chopped(3) : text;
}

QTableWidgetItem* Cell(const QString& text) {
    auto* const cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return cell;
}

}  // namespace

std::vector<KeysDialog::Row> KeysDialog::RowsOf(const QWidget& window, const std::vector<Row>& further) {
    std::vector<Row> rows;
    for (const QAction* const action : window.findChildren<QAction*>())
        if (!action->shortcut().isEmpty())
            rows.push_back({action->shortcut().toString(QKeySequence::NativeText), CaptionOf(*action)});
    const QString tab = QKeySequence(Qt::Key_Tab).toString(QKeySequence::NativeText);
    const QString control = QKeySequence(QStringLiteral("Ctrl+Tab")).toString(QKeySequence::NativeText);
    rows.push_back({control, tr("The next page, from the tabs")});
    rows.push_back({tab, tr("The next control; with Shift the one before")});
    rows.push_back({tr("Arrow keys"), tr("The cell beside, in a table")});
    rows.push_back({tr("Alt and an underlined letter"), tr("That control")});
    rows.insert(rows.end(), further.begin(), further.end());
    return rows;
}

KeysDialog::KeysDialog(const std::vector<Row>& rows, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("Keys"));
    setWindowTitle(tr("Keys"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* const table = new QTableWidget(static_cast<int>(rows.size()), 2, this);
    table->setObjectName(QStringLiteral("KeysTable"));
    table->setAccessibleName(tr("Keys"));
    table->setHorizontalHeaderLabels({tr("Key"), tr("What it does")});
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    for (int i = 0; i < table->rowCount(); ++i) {
        const Row& row = rows[static_cast<std::size_t>(i)];
        table->setItem(i, 0, Cell(row.keys));
        table->setItem(i, 1, Cell(row.what));
    }
    table->resizeColumnsToContents();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(buttons);
    resize(table->columnWidth(0) + table->columnWidth(1) + BesideTable, LinesSeen * table->rowHeight(0));
}
