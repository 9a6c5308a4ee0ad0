// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <devicecontrol/multichannelserver/common/gts/blankingsource.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>
#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>
#include <devicecontrol/multichannelserver/common/gts/plant/errorreport.h>
#include <devicecontrol/multichannelserver/common/gts/plant/gtsconfig.h>
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>
#include <devicecontrol/multichannelserver/common/gts/plant/wholehertz.h>

#include <platform/app/trace.h>
#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/modbus/modbustcpinterfacecreator.h>
#include <platform/values/valueaccess.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QStringList>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace {

std::unique_ptr<ICfg> OpenGts() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    return std::unique_ptr<ICfg>(root->OpenSection(gtskeys::Gts));
}

/// Of the plant that comes next.
std::optional<std::vector<ModuleSettings>>& SettingsInstead() {
    static auto& settings = *new std::optional<std::vector<ModuleSettings>>;
    return settings;
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

std::vector<ModuleSettings> SuppressionPlant::GetConfiguredSettings() {
    std::vector<ModuleSettings> all;
    const std::unique_ptr<ICfg> gts = OpenGts();
    for (gtsconfig::Entry& entry : gts ? gtsconfig::Load(*gts) : std::vector<gtsconfig::Entry>())
        all.push_back(std::move(entry.settings));
    return all;
}

QByteArray SuppressionPlant::GetConfigurationMark() {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&hash](const QString& text) {
        const QByteArray bytes = text.toUtf8();
        hash.addData(QByteArray::number(bytes.size()) + ':' + bytes);
    };
    const std::unique_ptr<ICfg> gts = OpenGts();
    for (const QString& key : gts ? gts->GetKeys() : QStringList()) {
        add(key);
        add(gts->ReadString(key, QString()));
    }
    return hash.result().toHex();
}

void SuppressionPlant::LoadInstead(std::vector<ModuleSettings> settings) {
    SettingsInstead() = std::move(settings);
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
    std::vector<ModuleSettings> all;
    for (gtsconfig::Entry& entry : gts ? gtsconfig::Load(*gts) : std::vector<gtsconfig::Entry>()) {
        m_sections.insert(entry.section);
        all.push_back(std::move(entry.settings));
    }
    if (SettingsInstead()) all = *std::exchange(SettingsInstead(), std::nullopt);
    for (const ModuleSettings& settings : all) {
        PlantModule& module = make(settings.index);
        module.Apply(settings.type, settings.address, settings.pollInterval);
        module.SetName(settings.label);
        module.SetLabels(settings.labels);
        module.SetFrequencies(settings.frequencies);
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
    m_isSaved = true;
}

void SuppressionPlant::Add(PlantModule& module) {
    m_modules.push_back(&module);
    module.SetPlant(this);
    module.SetNumber(m_nextNumber++);
    const auto tellFailure = [this, &module](const QString&, const QString&, int code, const QString& text) {
        if (m_listener == nullptr) return;
        m_listener->OnModuleFailed(
            {module.GetIdentity(), code, text, module.GetAddressFault(), module.HasFailedAgain()});
    };
    connect(&module, &PlantModule::SignalError, this, tellFailure);
    connect(&module, &PlantModule::SignalAnswersAgain, this, [this, &module] {
        if (m_listener != nullptr) m_listener->OnModuleAnswersAgain(module.GetIdentity());
    });
    connect(&module, &PlantModule::SignalSettingsChanged, this, &SuppressionPlant::TellSettings);
    connect(&module, &PlantModule::SignalChanged, this, &SuppressionPlant::SignalStatesChanged);
    connect(&module, &PlantModule::SignalInputsChanged, this, &SuppressionPlant::SignalStatesChanged);
    TellSettings();
}

void SuppressionPlant::Remove(PlantModule& module) {
    module.disconnect(this);
    module.SetPlant(nullptr);
    m_modules.erase(std::remove(m_modules.begin(), m_modules.end(), &module), m_modules.end());
    TellSettings();
}

/// The modules that go after the last save are no settings of anybody's.
void SuppressionPlant::TellSettings() {
    if (m_isSaved) return;
    Q_EMIT SignalSettingsChanged();
    Q_EMIT SignalStatesChanged();
}

PlantModule* SuppressionPlant::FindModule(const QString& name) const {
    const auto found = std::find_if(m_modules.begin(), m_modules.end(), [&name](const PlantModule* module) {
        return module->GetIdentity().NodeName() == name;
    });
    return found != m_modules.end() ? *found : nullptr;
}

bool SuppressionPlant::SetFrequency(const QString& module, int input, double hz) {
    PlantModule* const found = FindModule(module);
    if (found == nullptr) return false;
    found->SetFrequency(input, hz);
    found->RefreshTree();
    return true;
}

bool SuppressionPlant::SetName(const QString& module, const QString& label) {
    PlantModule* const found = FindModule(module);
    if (found != nullptr) found->SetName(label);
    return found != nullptr;
}

bool SuppressionPlant::SetLabel(const QString& module, int input, const QString& label) {
    PlantModule* const found = FindModule(module);
    if (found != nullptr) found->SetLabel(input, label);
    return found != nullptr;
}

bool SuppressionPlant::SetAddress(const QString& module, const QString& address) {
    PlantModule* const found = FindModule(module);
    if (found == nullptr) return false;
    const ModuleIdentity identity = found->GetIdentity();
    if (identity.address != address) found->Configure(identity.type, address, found->GetPollInterval());
    return true;
}

bool SuppressionPlant::ConnectModule(const QString& module) {
    PlantModule* const found = FindModule(module);
    if (found != nullptr) found->Connect();
    return found != nullptr;
}

std::vector<ModuleState> SuppressionPlant::GetStates() const {
    std::vector<ModuleState> all;
    for (const PlantModule* const module : m_modules)
        all.push_back(module->GetModuleState());
    return all;
}

std::vector<ModuleSettings> SuppressionPlant::GetSettings() const {
    std::vector<ModuleSettings> all;
    for (const PlantModule* const module : m_modules)
        all.push_back(module->GetSettings());
    return all;
}

void SuppressionPlant::ForEachModule(const std::function<void(const ModuleView&)>& look) const {
    for (const PlantModule* const module : m_modules)
        look(module->GetView());
}

QString SuppressionPlant::Describe(const BlankingSource& source) const {
    const PlantModule* const module = FindModule(source.module);
    // It has gone, and what it left in the tree blanks on.
    if (module == nullptr)
        return QStringLiteral("%1, %2").arg(source.module, modulename::InSentence(QString(), source.input));
    const ModuleView view = module->GetView();
    const auto input = static_cast<std::size_t>(source.input);
    const QString label = input < view.labels.size() ? view.labels[input] : QString();
    return QStringLiteral("%1, %2").arg(view.GetName(), modulename::InSentence(label, source.input));
}

std::vector<double> SuppressionPlant::GetUnsupervisedFrequencies() const {
    std::set<std::uint64_t> lost;
    std::set<std::uint64_t> switchedOff;
    std::set<std::uint64_t> watched;
    for (const PlantModule* const module : m_modules) {
        const ModuleView view = module->GetView();
        std::set<std::uint64_t>& all = view.state == EModuleState::Connected ? watched
                                       : view.isSwitchedOff                  ? switchedOff
                                                                             : lost;
        std::uint64_t hertz = 0;
        for (const double frequency : view.frequencies)
            if (frequency > 0.0 && wholehertz::Of(frequency, &hertz)) all.insert(hertz);
    }
    for (const std::uint64_t hertz : switchedOff)
        if (watched.count(hertz) == 0) lost.insert(hertz);
    return std::vector<double>(lost.begin(), lost.end());
}

bool SuppressionPlant::IsUnsupervised(double hz) const {
    std::uint64_t hertz = 0;
    if (!wholehertz::Of(hz, &hertz)) return false;
    const std::vector<double> all = GetUnsupervisedFrequencies();
    return std::binary_search(all.begin(), all.end(), static_cast<double>(hertz));
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
