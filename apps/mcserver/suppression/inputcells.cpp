// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputcells.h>

#include <apps/common/frequencytext.h>
#include <apps/mcserver/suppression/inputmodel.h>

#include <devicecontrol/multichannelserver/common/gts/modulename.h>

namespace {

enum class EInput { Error, Disconnected, Keyed, Silent };

EInput StateOf(const ModuleState& module, int input) {
    if (module.state == EModuleState::Error) return EInput::Error;
    if (module.state == EModuleState::Disconnected) return EInput::Disconnected;
    return module.IsKeyed(input) ? EInput::Keyed : EInput::Silent;
}

QString StateText(EInput state) {
    switch (state) {
        case EInput::Error:
            return InputModel::tr("? module in error");
        case EInput::Disconnected:
            return InputModel::tr("? module disconnected");
        case EInput::Keyed:
            return InputModel::tr("\u25cf keyed");
        case EInput::Silent:
            return InputModel::tr("\u25cb silent");
    }
    Q_UNREACHABLE();
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
            return StateText(StateOf(module, input));
        default:
            return QString();
    }
}

QStringList inputcells::StateTexts() {
    QStringList texts;
    for (const EInput state : {EInput::Error, EInput::Disconnected, EInput::Keyed, EInput::Silent})
        texts += StateText(state);
    return texts;
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
