// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppressionpage.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int ColumnWidth = 130;  // room for an address

/// The display has fixed widths, for small letters: where those of the desktop are larger, they are cut.
void MakeRoom(QWidget& display) {
    for (auto* const button : display.findChildren<QPushButton*>())
        button->setFixedWidth(qMax(button->minimumWidth(), button->sizeHint().width()));
    const auto* const tree = display.findChild<QTreeWidget*>();
    if (tree == nullptr) return;
    for (int column = 1; column < tree->columnCount(); ++column)
        tree->header()->resizeSection(column, qMax(tree->columnWidth(column), ColumnWidth));
}

}  // namespace

SuppressionPage::SuppressionPage(JobControl& jobs, ServerLog& log, IClock& clock, QWidget* parent)
    : Page(parent), m_log(log) {
    m_display = new GTSDisplay(this, nullptr, Qt::WindowFlags());
    m_display->SetListener(&m_log);
    MakeRoom(*m_display);
    m_guard = std::make_unique<BlankingGuard>(jobs, clock);
    m_reconnect = std::make_unique<ReconnectCommand>(*m_display, log);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_display);
    layout->addStretch();
}

SuppressionPage::~SuppressionPage() {
    m_reconnect.reset();
    m_guard.reset();
    delete m_display;
}

void SuppressionPage::Bind(const QString&, EMCSControlTreeSegments) {}

bool SuppressionPage::IsConfigured() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    const std::unique_ptr<ICfg> section(root->OpenSection(gtskeys::Gts));
    return section != nullptr && section->ReadInt(gtskeys::ModuleCount, 0) > 0;
}
