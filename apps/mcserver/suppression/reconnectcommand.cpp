// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/reconnectcommand.h>

#include <apps/mcserver/log/serverlog.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

ReconnectCommand::ReconnectCommand(SuppressionPlant& plant, ServerLog& log)
    : m_plant(plant),
      m_log(log),
      m_button(*this, values::ProvideValue<values::Value<bool>>(Path(), false, true, nullptr)) {}

QString ReconnectCommand::Path() {
    return mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Command), serverkeys::ReconnectModules);
}

void ReconnectCommand::Update(Observable* source, TChangeCode code) {
    if (m_button.EndIfGoingAway(source, code)) return;
    if (!m_button.Is(source) || code != changecode::ContentChanged || !m_button->GetValue()) return;
    m_button->SetValue(false, this);
    m_log.WriteFrom(Path(), ECode::ModulesConnectedAnew);
    m_plant.ConnectLostModules();
}
