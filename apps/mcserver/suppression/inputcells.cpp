// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputcells.h>

#include <apps/common/frequencytext.h>
#include <apps/mcserver/suppression/inputmodel.h>

#include <devicecontrol/multichannelserver/common/gts/modulename.h>

QString inputcells::TitleOf(int column) {
    const QString titles[] = {InputModel::tr("Module"),          InputModel::tr("IP Address"),
                              InputModel::tr("Input"),           InputModel::tr("Name"),
                              InputModel::tr("Frequency (MHz)"), InputModel::tr("State")};
    return column >= 0 && column < InputModel::ColumnCount ? titles[column] : QString();
}

QString inputcells::EarlierTitleOf(const ModuleSettings& settings) {
    return QStringLiteral("%1-%2").arg(settings.type, QString::number(qint64{settings.index} + 1));
}

lamplook::ELamp inputcells::LampOf(const ModuleState& module, int input, bool isUnsupervised) {
    if (module.state == EModuleState::Connected)
        return module.IsKeyed(input) ? lamplook::ELamp::Keyed : lamplook::ELamp::Silent;
    return isUnsupervised ? lamplook::ELamp::Unsupervised : lamplook::ELamp::Unknown;
}

QString inputcells::WhyNotLive(const ModuleState& module) {
    switch (module.state) {
        case EModuleState::Error:
            return InputModel::tr("The module is in error");
        case EModuleState::Disconnected:
            return InputModel::tr("The module is disconnected");
        case EModuleState::Connected:
            break;
    }
    return QString();
}

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
        default:
            return QString();
    }
}

QStringList inputcells::StateTexts() {
    QStringList texts;
    for (const lamplook::ELamp lamp : lamplook::All)
        texts += lamplook::Text(lamp);
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
