// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/gtsdisplayimpl.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/datamoduleeditor.h>
#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/inputassignmenteditor.h>
#include <devicecontrol/multichannelserver/common/gts/plant/errorreport.h>
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>

#include <platform/widgets/notifications.h>
#include <platform/widgets/plaintextdelegate.h>
#include <platform/widgets/valuetext.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <utility>

namespace {

constexpr int ButtonWidth = 80;
constexpr int TreeHeight = 100;
constexpr int Spacing = 5;

}  // namespace

GTSDisplayImpl::GTSDisplayImpl(GTSDisplay* display) : QObject(display), m_display(display) {}

GTSDisplayImpl::~GTSDisplayImpl() = default;

void GTSDisplayImpl::Build() {
    if (m_isBuilt) return;
    m_isBuilt = true;
    BuildTree();
    auto* const caption = new QLabel(tr("Data modules for Ground Transmitter Suppression:"), m_display);
    caption->setBuddy(m_tree);
    auto* const layout = new QVBoxLayout(m_display);
    layout->addWidget(caption);
    layout->addSpacing(Spacing);
    layout->addWidget(m_tree);
    layout->addLayout(BuildButtons());
    layout->addStretch();
}

void GTSDisplayImpl::BuildTree() {
    m_tree = new QTreeWidget(m_display);
    m_tree->setObjectName(QStringLiteral("dataModules"));
    m_tree->setAccessibleName(tr("Data modules"));
    m_tree->setColumnCount(DataModule::ColumnCount);
    m_tree->setHeaderLabels({tr("#"), tr("Type"), tr("IP Address"), tr("Polltime (ms)"), tr("Status")});
    m_tree->header()->setStretchLastSection(false);
    int column = 0;
    for (const int width : {40, 80, 80, 80, 80})
        m_tree->setColumnWidth(column++, width);
    m_tree->setRootIsDecorated(false);
    m_tree->setItemDelegate(new PlainTextDelegate(m_tree));
    m_tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tree->setFixedHeight(TreeHeight);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &GTSDisplayImpl::SlotOnRightClick);
}

QHBoxLayout* GTSDisplayImpl::BuildButtons() {
    auto* const row = new QHBoxLayout;
    row->addStretch();
    const auto add = [&](const QString& text, const char* name, void (GTSDisplayImpl::*slot)()) {
        auto* const button = new QPushButton(text, m_display);
        button->setObjectName(QLatin1String(name));
        button->setFixedWidth(ButtonWidth);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button, 0, Qt::AlignRight);
        return button;
    };
    m_assignInputs = add(tr("Assign Inputs"), "assignInputs", &GTSDisplayImpl::SlotAssignInputs);
    m_addModule = add(tr("Add module"), "addModule", &GTSDisplayImpl::SlotCreateNewDataModule);
    return row;
}

void GTSDisplayImpl::Load() {
    m_plant = std::make_unique<SuppressionPlant>();
    m_plant->Load([this](int index) -> PlantModule& {
        return Keep(std::make_unique<DataModule>(m_tree, index)).GetPlantModule();
    });
    EnableAssigning();
}

void GTSDisplayImpl::SlotOnRightClick(const QPoint& position) {
    auto* const module = dynamic_cast<DataModule*>(m_tree->itemAt(position));
    if (module == nullptr) return;
    m_menuModule = module;
    delete m_menu;
    m_menu = new QMenu(m_tree);
    const bool wasConnected = module->IsConnected();
    m_menu->addAction(wasConnected ? tr("Disconnect") : tr("Connect"), this, [this, wasConnected] {
        // It may have changed while the menu was open. What the operator chose holds, never its opposite.
        if (!m_menuModule.isNull() && m_menuModule->IsConnected() == wasConnected) SlotConnectDataModule();
    });
    m_menu->addAction(tr("Edit"), this, &GTSDisplayImpl::SlotEditDataModule);
    m_menu->addAction(tr("Delete"), this, &GTSDisplayImpl::SlotDeleteDataModule);
    m_menu->popup(m_tree->viewport()->mapToGlobal(position));
}

void GTSDisplayImpl::SlotConnectDataModule() {
    if (m_menuModule.isNull()) return;
    if (m_menuModule->IsConnected())
        m_menuModule->Disconnect();
    else
        m_menuModule->GetPlantModule().ConnectAnew();
}

void GTSDisplayImpl::SlotEditDataModule() {
    if (!m_menuModule.isNull()) Edit(m_menuModule);
}

void GTSDisplayImpl::SlotDeleteDataModule() {
    if (m_menuModule.isNull()) return;
    const auto found = std::find_if(m_modules.begin(), m_modules.end(),
                                    [this](const auto& module) { return module.get() == m_menuModule; });
    if (found == m_modules.end()) return;
    m_tree->takeTopLevelItem(m_tree->indexOfTopLevelItem(found->get()));
    std::unique_ptr<DataModule> module = std::move(*found);
    m_modules.erase(found);
    module.reset();  // may take a while, and is not done before the count says so
    m_plant->ShowCount();
    EnableAssigning();
}

void GTSDisplayImpl::SlotCreateNewDataModule() {
    if (m_newModule) return;
    m_newModule = std::make_unique<DataModule>(m_tree, m_plant->FreeIndex());
    const QPointer<GTSDisplayImpl> self(this);
    const bool isAccepted = Edit(m_newModule.get());
    if (self.isNull()) return;
    std::unique_ptr<DataModule> module = std::move(m_newModule);
    if (!isAccepted) return;
    AddToPlant(Keep(std::move(module)));
}

void GTSDisplayImpl::AddModule(const ModuleSettings& settings) {
    const bool isTaken = std::any_of(m_modules.begin(), m_modules.end(), [&settings](const auto& module) {
        return module->GetIndex() == settings.index;
    });
    const int index = isTaken ? m_plant->FreeIndex() : settings.index;
    auto module =
        std::make_unique<DataModule>(m_tree, index, settings.type, settings.address, settings.pollInterval);
    PlantModule& plantModule = module->GetPlantModule();
    plantModule.SetName(settings.label);
    plantModule.SetLabels(settings.labels);
    plantModule.SetFrequencies(settings.frequencies);
    AddToPlant(Keep(std::move(module)));
}

void GTSDisplayImpl::AddToPlant(DataModule& module) {
    m_plant->Add(module.GetPlantModule());
    module.GetPlantModule().Connect();
    m_plant->ShowCount();
    EnableAssigning();
}

void GTSDisplayImpl::SlotAssignInputs() {
    // The display may be destroyed while the dialog is open, and takes it along then.
    const QPointer<InputAssignmentEditor> editor = new InputAssignmentEditor(m_display, Modules());
    editor->SetFrequencyRange(m_range);
    editor->exec();
    delete editor;
}

bool GTSDisplayImpl::Edit(DataModule* module) {
    const QPointer<DataModuleEditor> editor = new DataModuleEditor(m_display, module);
    const bool isAccepted = editor->exec() == QDialog::Accepted;
    delete editor;
    return isAccepted;
}

DataModule& GTSDisplayImpl::Keep(std::unique_ptr<DataModule> module) {
    connect(module.get(), &DataModule::SignalError, this, &GTSDisplayImpl::SlotDataModuleError);
    m_modules.push_back(std::move(module));
    return *m_modules.back();
}

std::vector<DataModule*> GTSDisplayImpl::Modules() const {
    std::vector<DataModule*> modules;
    for (const auto& module : m_modules)
        modules.push_back(module.get());
    return modules;
}

void GTSDisplayImpl::EnableAssigning() {
    m_assignInputs->setEnabled(!m_modules.empty());
}

void GTSDisplayImpl::SlotDataModuleError(const QString& name, const QString& address, int errorcode,
                                         const QString& errortext) {
    const QString message = errorreport::Text(name, address, errorcode, errortext);
    errorreport::Trace(message);
    // Who looks at it reads the same in the language of the window; what goes to the tree stays as it is
    // known.
    ShowWarning(errorreport::Text(name, address, errorcode, valuetext::Reason(errortext)));
    errorreport::Write(message);
}

/// Only one at a time: a module that fails goes on failing. (fixed: one-warning)
void GTSDisplayImpl::ShowWarning(const QString& message) {
    if (!m_warning.isNull() && m_warning->isVisible()) return;
    m_warning = Notifications::warning(tr("MultiChannel Server: GTS I/O failure"), message);
}
