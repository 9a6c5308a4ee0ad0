// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/inputassignmenteditor.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/view/frequencycell.h>
#include <devicecontrol/multichannelserver/common/gts/view/frequencydelegate.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableWidget>

#include <algorithm>
#include <cmath>

namespace {

constexpr int EditorButtonWidth = 80;
constexpr double HertzPerMegahertz = 1e6;

QString TextOf(double hz) {
    return QString::number(hz * 1e-6, 'f', 3);
}

/// In binary, 128.003 times 1e6 is less than 128003000, and would be blanked as 128002999: what is whole
/// hertz in decimal becomes whole hertz.
double ToHertz(double megahertz) {
    constexpr double Tolerance = 1e-3;
    const double hz = megahertz * HertzPerMegahertz;
    const double whole = std::nearbyint(hz);
    return std::abs(hz - whole) < Tolerance ? whole : hz;
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
}

void InputAssignmentEditor::Build() {
    auto* const caption =
        new QLabel(tr("Assignment of Frequency (in MHz) to Digital Input of data module:"), this);
    m_table = new QTableWidget(this);
    m_table->setObjectName(QStringLiteral("assignments"));
    m_table->setAccessibleName(tr("Frequencies in MHz"));
    m_table->setItemDelegate(new FrequencyDelegate(m_table));
    caption->setBuddy(m_table);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_table);
    layout->addLayout(BuildButtons());
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
        Mark(*cell, isThere && module.GetFrequency(input) < 0.0);
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
}

void InputAssignmentEditor::TakeOver(QTableWidgetItem& cell, DataModule& module, int input) {
    QString text = cell.text();
    if (text.contains(QLatin1Char(','))) cell.setText(text.replace(QLatin1Char(','), QLatin1Char('.')));
    // The table shows three decimals. A frequency that has more keeps them while nobody touches its cell.
    // (fixed: untouched-cells)
    if (auto* const own = dynamic_cast<FrequencyCell*>(&cell)) {
        if (!own->IsTouched()) return;
        own->SetTakenOver();
    }
    bool isNumber = false;
    const double megahertz = text.toDouble(&isNumber);
    module.SetFrequency(input, isNumber ? ToHertz(megahertz) : 0.0);
    const double hz = module.GetFrequency(input);
    Mark(cell, !text.isEmpty() && (!isNumber || hz < 0.0 || (hz == 0.0 && megahertz != 0.0)));
}

void InputAssignmentEditor::Mark(QTableWidgetItem& cell, bool isWrong) {
    cell.setIcon(isWrong ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    cell.setToolTip(isWrong ? tr("This is no frequency: nothing is assigned to the input") : QString());
}

void InputAssignmentEditor::SlotSaveAssignments() {
    SlotApply();
    accept();
}
