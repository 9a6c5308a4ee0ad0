// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppressionpage.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <QtWidgets/QVBoxLayout>

SuppressionPage::SuppressionPage(JobControl& jobs, ServerLog& log, IClock& clock, QWidget* parent)
    : Page(parent) {
    ModbusTcpInterfaceCreator::Configure();
    m_display = new GTSDisplay(this, nullptr, Qt::WindowFlags());
    m_guard = std::make_unique<BlankingGuard>(jobs, log, clock);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_display);
    layout->addStretch();
}

SuppressionPage::~SuppressionPage() {
    m_guard.reset();
    delete m_display;
}

void SuppressionPage::Bind(const QString&, EMCSControlTreeSegments) {}

bool SuppressionPage::IsConfigured() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    const std::unique_ptr<ICfg> section(root->OpenSection(QStringLiteral("GTS")));
    return section != nullptr && section->ReadInt(QStringLiteral("ModuleCount"), 0) > 0;
}
