// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicecontrol.h>

QString servicecontrol::Obstacle() {
    return QStringLiteral(
        "this system starts the server as any program: by mcserver.service, which is installed with it");
}

QString servicecontrol::Install(const QString& /*name*/, const QStringList& /*arguments*/) {
    return Obstacle();
}

QString servicecontrol::Remove(const QString& /*name*/) {
    return Obstacle();
}

QString servicecontrol::ConfigFile(const QString& /*name*/) {
    return QString();
}

int servicecontrol::Run(const QString& /*name*/, const std::function<int()>& run) {
    return run();
}
