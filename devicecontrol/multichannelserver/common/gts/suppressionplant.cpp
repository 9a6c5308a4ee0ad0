// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>
#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>
#include <devicecontrol/multichannelserver/common/gts/plant/errorreport.h>
#include <devicecontrol/multichannelserver/common/gts/plant/gtsconfig.h>
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>

#include <platform/app/trace.h>
#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/modbus/modbustcpinterfacecreator.h>
#include <platform/values/valueaccess.h>

#include <algorithm>
#include <memory>

namespace {

std::unique_ptr<ICfg> OpenGts() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    return std::unique_ptr<ICfg>(root->OpenSection(gtskeys::Gts));
}

}  // namespace

SuppressionPlant* SuppressionPlant::s_instance = nullptr;

SuppressionPlant::SuppressionPlant() {
    MCS_ASSERT(s_instance == nullptr);
    if (s_instance == nullptr) s_instance = this;
}

SuppressionPlant::~SuppressionPlant() {
    for (PlantModule* const module : m_modules)
        module->SetPlant(nullptr);
    if (IsInCharge()) s_instance = nullptr;
}

bool SuppressionPlant::IsInCharge() const {
    return s_instance == this;
}

bool SuppressionPlant::IsConfigured() {
    const std::unique_ptr<ICfg> gts = OpenGts();
    return gts != nullptr && gts->ReadInt(gtskeys::ModuleCount, 0) > 0;
}

void SuppressionPlant::ConnectLostModules() {
    for (PlantModule* const module : m_modules)
        if (module->GetState() == PlantModule::EState::Error) module->ConnectAnew();
}

void SuppressionPlant::Load(const Maker& make) {
    if (!IsInCharge()) return;
    ModbusTcpInterfaceCreator::Configure();
    errorreport::Provide();
    const std::unique_ptr<ICfg> gts = OpenGts();
    const std::vector<gtsconfig::Entry> entries =
        gts ? gtsconfig::Load(*gts) : std::vector<gtsconfig::Entry>();
    for (const gtsconfig::Entry& entry : entries) {
        PlantModule& module = make(entry.index);
        module.Apply(entry.type, entry.address, entry.pollInterval);
        if (const std::unique_ptr<ICfg> section{gts->OpenSection(entry.section)})
            module.LoadAssignments(*section);
        m_sections.insert(entry.section);
        Add(module);
        module.Connect();
    }
    ShowCount();
}

void SuppressionPlant::Save() {
    if (!IsInCharge()) return;
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    const std::unique_ptr<ICfg> gts(root->ProvideSection(gtskeys::Gts));
    gtsconfig::Save(*gts, m_modules, &m_sections);
}

void SuppressionPlant::Add(PlantModule& module) {
    m_modules.push_back(&module);
    module.SetPlant(this);
    const auto tellFailure = [this, &module](const QString&, const QString&, int code, const QString& text) {
        if (m_listener == nullptr) return;
        m_listener->OnModuleFailed({module.GetIdentity(), code, text, module.GetAddressFault()});
    };
    connect(&module, &PlantModule::SignalError, this, tellFailure);
    connect(&module, &PlantModule::SignalAnswersAgain, this, [this, &module] {
        if (m_listener != nullptr) m_listener->OnModuleAnswersAgain(module.GetIdentity());
    });
}

void SuppressionPlant::Remove(PlantModule& module) {
    module.disconnect(this);
    module.SetPlant(nullptr);
    m_modules.erase(std::remove(m_modules.begin(), m_modules.end(), &module), m_modules.end());
}

void SuppressionPlant::ShowCount() const {
    if (values::Tree::Instance() == nullptr) return;
    const QString path = mcskeys::Join(gtskeys::NodePath(), gtskeys::Configured);
    values::ProvideValue<values::Value<int>>(path, Count(), true, nullptr);
}

int SuppressionPlant::FreeIndex() const {
    std::vector<int> used;
    for (const PlantModule* const module : m_modules)
        used.push_back(module->GetIdentity().index);
    return gtsconfig::LowestFreeIndex(std::move(used));
}

int SuppressionPlant::IndexFor(const PlantModule& module) const {
    const ModuleIdentity& identity = module.GetIdentity();
    const QString name = identity.NodeName();
    const bool isTaken = std::any_of(m_modules.begin(), m_modules.end(), [&](const PlantModule* other) {
        return other != &module && other->GetIdentity().NodeName() == name;
    });
    if (!isTaken) return identity.index;
    const int index = FreeIndex();
    MCS_TRACE(QStringLiteral("There is a data module %1 already; this one has the index %2 now")
                  .arg(name, QString::number(index)));
    return index;
}
