// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/devicechoice.h>

#include <apps/mcserver/device/simulatedorv.h>
#include <apps/mcserver/hamlib/hamlibmodule.h>
#include <apps/mcserver/hamlib/hamliborv.h>
#include <apps/mcserver/plugin/driverplugin.h>
#include <apps/mcserver/plugin/pluginorv.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

std::unique_ptr<IOrvDevice> MakeHamlibOrv(const HamlibSettings& settings, IClock& clock, QString* error) {
    const std::unique_ptr<IRigMaker> maker = hamlibmodule::Load(settings, error);
    if (maker == nullptr) return nullptr;
    auto device = std::make_unique<HamlibOrv>(maker->GetName(), clock);
    const QStringList ports = settings.ports.isEmpty() ? QStringList(QString()) : settings.ports;
    for (const QString& port : ports)
        device->AddReceiver(port, maker->Make(port));
    return device;
}

}  // namespace

QString DeviceChoice::Parse(const QString& text) {
    const int colon = text.indexOf(QLatin1Char(':'));
    const QString word = text.left(colon);
    const QString rest = colon == -1 ? QString() : text.mid(colon + 1);
    if (text == QLatin1String("simulated")) {
        kind = EKind::Simulated;
        return QString();
    }
    if (word == QLatin1String("hamlib")) {
        kind = EKind::Hamlib;
        return hamlib.Parse(rest);
    }
    if (word == QLatin1String("plugin")) {
        kind = EKind::Plugin;
        const int comma = rest.indexOf(QLatin1Char(','));
        pluginFile = rest.left(comma);
        pluginOptions = comma == -1 ? QString() : rest.mid(comma + 1);
        return pluginFile.isEmpty() ? QStringLiteral("which file? plugin:FILE[,OPTIONS]") : QString();
    }
    return QStringLiteral(
               "there is no device '%1', only simulated, hamlib:MODEL[,PORT...] and plugin:FILE[,OPTIONS]")
        .arg(word);
}

QString DeviceChoice::WithWholePath(const QString& text) {
    DeviceChoice choice;
    if (!choice.Parse(text).isEmpty() || choice.kind != EKind::Plugin) return text;
    const QString file = QFileInfo(choice.pluginFile).absoluteFilePath();
    const QString beginning = QStringLiteral("plugin:");
    return beginning + QDir::toNativeSeparators(file) + text.mid(beginning.size() + choice.pluginFile.size());
}

std::unique_ptr<IOrvDevice> DeviceChoice::Make(IClock& clock, QString* error) const {
    switch (kind) {
        case EKind::Hamlib:
            return MakeHamlibOrv(hamlib, clock, error);
        case EKind::Plugin: {
            std::unique_ptr<IOrvDriver> driver = driverplugin::Load(pluginFile, pluginOptions, error);
            return driver != nullptr ? std::make_unique<PluginOrv>(std::move(driver)) : nullptr;
        }
        case EKind::Simulated:
            break;
    }
    return std::make_unique<SimulatedOrv>(clock);
}
