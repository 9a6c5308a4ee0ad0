// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/gtsdisplayimpl.h>

#include <platform/modbus/modbustcpinterfacecreator.h>

GTSDisplay::GTSDisplay(QWidget* parent, const char* name, Qt::WindowFlags flags) : QWidget(parent, flags) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("GTSDisplay"));
    Blanking::Instance();  // makes the node below which the modules publish themselves
    ModbusTcpInterfaceCreator::Configure();
    m_impl = std::make_unique<GTSDisplayImpl>(this);
    m_impl->Build();
    m_impl->Load();
}

GTSDisplay::~GTSDisplay() {
    m_impl->Save();
    m_impl.reset();
    Blanking::Instance()->FreeInstance();
}

void GTSDisplay::SetListener(ISuppressionListener* listener) {
    m_impl->SetListener(listener);
}

void GTSDisplay::ConnectLostModules() {
    m_impl->ConnectLostModules();
}
