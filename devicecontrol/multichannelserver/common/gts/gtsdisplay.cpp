// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/gtsdisplayimpl.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <QtWidgets/QPushButton>

GTSDisplay::GTSDisplay(QWidget* parent, const char* name, Qt::WindowFlags flags) : QWidget(parent, flags) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("GTSDisplay"));
    Blanking::Instance();  // makes the node below which the modules publish themselves
    m_impl = std::make_unique<GTSDisplayImpl>(this);
    m_impl->Build();
    m_impl->Load();
}

GTSDisplay::GTSDisplay(LookOnly /*look*/, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("GTSDisplay"));
    m_impl = std::make_unique<GTSDisplayImpl>(this);
    m_impl->Build();
    for (QPushButton* const button : findChildren<QPushButton*>())
        button->setEnabled(false);
}

GTSDisplay::~GTSDisplay() {
    if (!m_impl->IsLoaded()) return;
    m_impl->GetPlant().Save();
    const bool isInCharge = m_impl->GetPlant().IsInCharge();
    m_impl.reset();
    if (isInCharge) Blanking::Instance()->FreeInstance();
}

void GTSDisplay::AddModule(const ModuleSettings& settings) {
    m_impl->AddModule(settings);
}

SuppressionPlant& GTSDisplay::GetPlant() {
    return m_impl->GetPlant();
}

void GTSDisplay::SetFrequencyRange(const FrequencyRange& range) {
    m_impl->SetFrequencyRange(range);
}

void GTSDisplay::ConnectLostModules() {
    m_impl->GetPlant().ConnectLostModules();
}
