// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/inputassignmenteditor.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/view/frequencycell.h>
#include <devicecontrol/multichannelserver/common/gts/view/frequencydelegate.h>
#include <devicecontrol/multichannelserver/common/gts/view/frequencyentry.h>
#include <devicecontrol/multichannelserver/common/gts/view/remark.h>

#include <QtCore/QSignalBlocker>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableWidget>

#include <algorithm>

namespace {

constexpr int EditorButtonWidth = 80;
constexpr int BelowTheTable = 2;  // of what the dialog shows

QString TextOf(double hz) {
    return QString::number(hz * 1e-6, 'f', 3);
}

}  // namespace

InputAssignmentEditor::InputAssignmentEditor(QWidget* parent, const std::vector<DataModule*>& modules)
    : QDialog(parent), m_modules(modules.begin(), modules.end()) {
    setObjectName(QStringLiteral("InputAssignmentEditor"));  // fixed: object-names
    setModal(true);
    setMinimumSize(550, 200);
    setWindowTitle(tr("Assign Inputs"));
    Build();
    Fill();
    connect(m_table, &QTableWidget::itemChanged, this, &InputAssignmentEditor::OnItemChanged);
    connect(m_table, &QTableWidget::currentItemChanged, this, &InputAssignmentEditor::ShowRemark);
    ShowRemark();
}

void InputAssignmentEditor::SetFrequencyRange(const FrequencyRange& range) {
    m_range = range;
    for (int row = 0; row < m_table->rowCount(); ++row)
        for (int input = 0; input < m_table->columnCount(); ++input)
            if (QTableWidgetItem* const cell = m_table->item(row, input)) MarkDoubt(*cell);
    ShowRemark();
}

void InputAssignmentEditor::Build() {
    auto* const caption =
        new QLabel(tr("Assignment of Frequency (in MHz) to Digital Input of data module:"), this);
    m_table = new QTableWidget(this);
    m_table->setObjectName(QStringLiteral("assignments"));
    m_table->setAccessibleName(tr("Frequencies in MHz"));
    auto* const delegate = new FrequencyDelegate(m_table);
    connect(delegate, &FrequencyDelegate::SignalTyped, this, &InputAssignmentEditor::OnTyped);
    m_table->setItemDelegate(delegate);
    caption->setBuddy(m_table);
    m_layout = new QVBoxLayout(this);
    m_layout->addWidget(caption);
    m_layout->addWidget(m_table);
    m_layout->addLayout(BuildButtons());
}

QHBoxLayout* InputAssignmentEditor::BuildButtons() {
    auto* const row = new QHBoxLayout;
    row->addStretch();
    const auto add = [&](const QString& text, const char* name, void (InputAssignmentEditor::*slot)()) {
        auto* const button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setFixedWidth(EditorButtonWidth);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
        return button;
    };
    add(tr("Ok"), "ok", &InputAssignmentEditor::SlotSaveAssignments)->setDefault(true);
    add(tr("Apply"), "apply", &InputAssignmentEditor::SlotApply);
    add(tr("Cancel"), "cancel", &InputAssignmentEditor::reject);
    return row;
}

void InputAssignmentEditor::Fill() {
    int columns = 0;
    QStringList rowHeaders;
    for (const auto& module : m_modules) {
        columns = std::max(columns, int{module->GetNumberOfInputs()});
        rowHeaders += module->GetType() + QLatin1Char('-') + QString::number(qint64{module->GetIndex()} + 1);
    }
    QStringList columnHeaders;
    for (int column = 0; column < columns; ++column)
        columnHeaders += tr("DI %1").arg(column);
    m_table->setColumnCount(columns);
    m_table->setHorizontalHeaderLabels(columnHeaders);
    m_table->setRowCount(rowHeaders.size());
    m_table->setVerticalHeaderLabels(rowHeaders);
    int row = 0;
    for (const auto& module : m_modules)
        FillRow(row++, *module);
}

/// Inputs that the module does not have are empty and cannot be edited.
void InputAssignmentEditor::FillRow(int row, const DataModule& module) {
    for (int input = 0; input < m_table->columnCount(); ++input) {
        const bool isThere = input < module.GetNumberOfInputs();
        auto* const cell = new FrequencyCell(isThere ? TextOf(module.GetFrequency(input)) : QString());
        Mark(*cell, isThere && module.GetFrequency(input) < 0.0 ? NoFrequencyText() : QString());
        if (!isThere) cell->setFlags(Qt::NoItemFlags);
        m_table->setItem(row, input, cell);
    }
}

void InputAssignmentEditor::SlotApply() {
    int row = 0;
    for (const QPointer<DataModule>& module : m_modules) {
        for (int input = 0; !module.isNull() && input < m_table->columnCount(); ++input)
            if (QTableWidgetItem* const cell = m_table->item(row, input)) TakeOver(*cell, *module, input);
        if (!module.isNull()) module->RefreshTree();
        ++row;
    }
    ShowRemark();
}

void InputAssignmentEditor::TakeOver(QTableWidgetItem& cell, DataModule& module, int input) {
    const QSignalBlocker blocker(m_table);  // the marks of what was taken over follow below
    const FrequencyEntry entry(cell.text());
    if (entry.GetText() != cell.text()) cell.setText(entry.GetText());
    // The table shows three decimals. A frequency that has more keeps them while nobody touches its cell.
    // (fixed: untouched-cells)
    if (auto* const own = dynamic_cast<FrequencyCell*>(&cell)) {
        if (!own->IsTouched()) return;
        own->SetTakenOver();
    }
    module.SetFrequency(input, entry.GetHz());
    Mark(cell, entry.IsWrong() ? NoFrequencyText() : entry.GetDoubt(m_range));
}

QString InputAssignmentEditor::NoFrequencyText() {
    return tr("This is no frequency: nothing is assigned to the input");
}

void InputAssignmentEditor::Mark(QTableWidgetItem& cell, const QString& text) {
    if (cell.toolTip() == text && cell.icon().isNull() == text.isEmpty()) return;
    const QSignalBlocker blocker(m_table);
    cell.setIcon(text.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning));
    cell.setToolTip(text);
    cell.setData(Qt::AccessibleDescriptionRole, text.isEmpty() ? QVariant() : text);
}

void InputAssignmentEditor::MarkDoubt(QTableWidgetItem& cell) {
    if (cell.flags() != Qt::NoItemFlags) Mark(cell, FrequencyEntry(cell.text()).GetDoubt(m_range));
}

void InputAssignmentEditor::OnItemChanged(QTableWidgetItem* cell) {
    MarkDoubt(*cell);
    ShowRemark();
}

/// While a text is typed, the cell has the one from before.
void InputAssignmentEditor::OnTyped(const QModelIndex& index, const QString& text) {
    const QTableWidgetItem* const cell = m_table->item(index.row(), index.column());
    if (cell == nullptr) return;
    const QString doubt = FrequencyEntry(text).GetDoubt(m_range);
    Remark::Show(m_remark, doubt.isEmpty() ? doubt : RemarkOf(*cell, doubt), *m_layout, BelowTheTable);
}

void InputAssignmentEditor::ShowRemark() {
    const QTableWidgetItem* told = m_table->currentItem();
    if (told != nullptr && told->toolTip().isEmpty()) told = nullptr;
    for (int row = 0; told == nullptr && row < m_table->rowCount(); ++row)
        for (int input = 0; told == nullptr && input < m_table->columnCount(); ++input) {
            const QTableWidgetItem* const cell = m_table->item(row, input);
            if (cell != nullptr && !cell->toolTip().isEmpty()) told = cell;
        }
    Remark::Show(m_remark, told != nullptr ? RemarkOf(*told, told->toolTip()) : QString(), *m_layout,
                 BelowTheTable);
}

QString InputAssignmentEditor::RemarkOf(const QTableWidgetItem& cell, const QString& text) const {
    return QStringLiteral("%1, %2: %3")
        .arg(m_table->verticalHeaderItem(cell.row())->text(),
             m_table->horizontalHeaderItem(cell.column())->text(), text);
}

void InputAssignmentEditor::SlotSaveAssignments() {
    SlotApply();
    accept();
}
