// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/datamoduleeditor.h>

#include <devicecontrol/multichannelserver/common/displays/formrow.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/moduleaddress.h>
#include <devicecontrol/multichannelserver/common/gts/view/remark.h>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTreeWidget>

#include <algorithm>

namespace {

constexpr int FieldWidth = 100;
constexpr PollInterval MinPollInterval(10);
constexpr PollInterval MaxPollInterval(1000);
constexpr PollInterval DefaultPollInterval(100);

}  // namespace

DataModuleEditor::DataModuleEditor(QWidget* parent, DataModule* module) : QDialog(parent), m_module(module) {
    setObjectName(QStringLiteral("ModuleEditDialog"));  // fixed: object-names
    setModal(true);
    Build();
    Fill();
    connect(m_address, &QLineEdit::textChanged, this, &DataModuleEditor::ShowDoubt);
    ShowDoubt();
}

void DataModuleEditor::Build() {
    m_group = new QGroupBox(this);
    auto* const grid = new QGridLayout(m_group);
    m_type = new QComboBox(m_group);
    m_address = new QLineEdit(m_group);
    m_pollInterval = new QSpinBox(m_group);
    m_pollInterval->setRange(static_cast<int>(MinPollInterval.count()),
                             static_cast<int>(MaxPollInterval.count()));
    AddRow(*grid, tr("Type:"), m_type, "type");
    AddRow(*grid, tr("IP Address:"), m_address, "address");
    AddRow(*grid, tr("Poll interval (ms):"), m_pollInterval, "pollInterval");
    m_layout = new QVBoxLayout(this);
    m_layout->addWidget(m_group);
    m_layout->addLayout(BuildButtons());
}

void DataModuleEditor::AddRow(QGridLayout& grid, const QString& caption, QWidget* field, const char* name) {
    formrow::Add(grid, {caption, field, name})->setFixedWidth(FieldWidth);
    field->setFixedWidth(FieldWidth);
}

QLayout* DataModuleEditor::BuildButtons() {
    auto* const row = new QHBoxLayout;
    auto* const ok = new QPushButton(tr("Ok"), this);
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &DataModuleEditor::SlotOkButton);
    auto* const cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancel"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

void DataModuleEditor::Fill() {
    const bool isNew = m_module.isNull() || m_module->GetType().isEmpty();
    m_group->setTitle(isNew ? tr("Add new module") : tr("Edit module properties"));
    SetType(isNew ? QStringLiteral("ADAM-6051") : m_module->GetType());
    m_address->setText(isNew ? QStringLiteral("127.0.0.1") : m_module->GetAddress());
    const PollInterval interval = isNew ? DefaultPollInterval : m_module->GetPollInterval();
    m_pollInterval->setValue(static_cast<int>(std::min(interval, MaxPollInterval).count()));
    setWindowTitle(m_group->title());
}

/// The types offered are those that were put in. (fixed: types-offered)
void DataModuleEditor::SetType(const QString& type) {
    int found = m_type->findText(type, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found < 0) {
        found = m_type->count();
        m_type->addItem(type);
    }
    m_type->setCurrentIndex(found);
}

QString DataModuleEditor::GetDoubt() const {
    const QString address = m_address->text();
    const QString fault = ModuleAddress::GetFault(address);
    if (!fault.isEmpty())
        return tr("This address cannot be right: %1. The module will be in error, and nothing of it will "
                  "blank.")
            .arg(fault);
    const QTreeWidget* const rows = m_module.isNull() ? nullptr : m_module->treeWidget();
    for (int i = 0; rows != nullptr && i < rows->topLevelItemCount(); ++i) {
        const auto* const other = dynamic_cast<const DataModule*>(rows->topLevelItem(i));
        if (other == nullptr || other == m_module || other->GetAddress().trimmed() != address.trimmed())
            continue;
        return tr("%1-%2 has this address too: both will read the same inputs.")
            .arg(other->GetType(), QString::number(qint64{other->GetIndex()} + 1));
    }
    return QString();
}

void DataModuleEditor::ShowDoubt() {
    constexpr int BelowTheFields = 1;
    const QString doubt = GetDoubt();
    m_address->setToolTip(doubt);
    m_address->setAccessibleDescription(doubt);
    Remark::Show(m_remark, doubt, *m_layout, BelowTheFields);
    if (!isVisible()) return;  // it is made large enough when it is shown
    m_layout->activate();
    const int needed =
        m_layout->hasHeightForWidth() ? m_layout->totalHeightForWidth(width()) : sizeHint().height();
    if (needed > height()) resize(width(), needed);
}

void DataModuleEditor::SlotOkButton() {
    if (!m_module.isNull())
        m_module->Configure(m_type->currentText(), m_address->text(), PollInterval(m_pollInterval->value()));
    m_module.clear();
    accept();
}
