// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/headlesssuppression.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/plant/errorreport.h>
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

HeadlessSuppression::HeadlessSuppression() : m_plant(std::make_unique<SuppressionPlant>()) {
    Blanking::Instance();  // makes the node below which the modules publish themselves
    m_plant->Load([this](int index) -> PlantModule& { return MakeModule(index); });
}

HeadlessSuppression::~HeadlessSuppression() {
    m_plant->Save();
    m_modules.clear();
    if (m_plant->IsInCharge()) Blanking::Instance()->FreeInstance();
}

PlantModule& HeadlessSuppression::MakeModule(int index) {
    m_modules.push_back(std::make_unique<PlantModule>(index));
    PlantModule& module = *m_modules.back();
    connect(&module, &PlantModule::SignalError, this,
            [](const QString& name, const QString& address, int errorcode, const QString& errortext) {
                const QString message = errorreport::Text(name, address, errorcode, errortext);
                errorreport::Trace(message);
                errorreport::Write(message);
            });
    return module;
}
