// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputcells.h>

#include <apps/common/frequencytext.h>
#include <apps/mcserver/suppression/inputmodel.h>

#include <devicecontrol/multichannelserver/common/gts/modulename.h>

namespace {

QString StateText(const ModuleState& module, int input) {
    if (module.state == EModuleState::Error) return InputModel::tr("? module in error");
    if (module.state == EModuleState::Disconnected) return InputModel::tr("? module disconnected");
    return module.IsKeyed(input) ? InputModel::tr("\u25cf keyed") : InputModel::tr("\u25cb silent");
}

}  // namespace

QString inputcells::TextOf(const ModuleState& module, int input, int column) {
    const ModuleSettings& settings = module.settings;
    const auto i = static_cast<std::size_t>(input);
    switch (column) {
        case InputModel::Module:
            return settings.GetName();
        case InputModel::Address:
            return settings.address;
        case InputModel::Input:
            return modulename::OfInput(QString(), input);  // as tables of inputs count
        case InputModel::Name:
            return settings.labels[i];
        case InputModel::Frequency:
            return settings.frequencies[i] != 0.0 ? FrequencyText::InMegahertz(settings.frequencies[i])
                                                  : QString();
        case InputModel::State:
            return StateText(module, input);
        default:
            return QString();
    }
}

bool inputcells::AreOther(const ModuleState& before, const ModuleState& now, int input, int column) {
    const auto i = static_cast<std::size_t>(input);
    switch (column) {
        case InputModel::Module:
            return before.settings.GetName() != now.settings.GetName();
        case InputModel::Address:
            return before.settings.address != now.settings.address;
        case InputModel::Name:
            return before.settings.labels[i] != now.settings.labels[i];
        case InputModel::Frequency:
            return before.settings.frequencies[i] != now.settings.frequencies[i];
        case InputModel::State:
            return before.state != now.state || before.IsKeyed(input) != now.IsKeyed(input);
        default:
            return false;
    }
}
