// SPDX-License-Identifier: Apache-2.0
#include "role.h"

#include "pinning.h"

#include <platform/app/errorhandler.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace bench {

namespace {

// No child outlives this, whatever happens to the process that started it.
constexpr int LongestLife = 100 * 1000;  // ms

void TellLine(const QString& line) {
    std::fputs(qPrintable(line + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

}  // namespace

Role::~Role() = default;

int Role::Run(const QStringList& arguments) {
    const QString name = arguments.value(0);
    const Settings settings(arguments.mid(1));
    if (settings.Has(QStringLiteral("core"))) PinToCore(settings.Int(QStringLiteral("core")));
    // Children are ended without ceremony, which would fill the screen with traces of lost connections.
    if (!qEnvironmentVariableIsSet("MCS_TRACE")) ErrorHandler::Instance().SetTraceFlags(0);
    QTimer::singleShot(LongestLife, [] { Fail(QStringLiteral("took too long")); });
    for (const RoleEntry& entry : AllRoles()) {
        if (name != QLatin1String(entry.name)) continue;
        const std::unique_ptr<Role> role = entry.make(settings);
        QTimer::singleShot(0, role.get(), [&role] { role->Start(); });
        return QCoreApplication::exec();
    }
    Fail(QStringLiteral("no role ") + name);
}

void Role::Fail(const QString& reason) {
    TellLine(QStringLiteral("failed ") + reason);
    std::_Exit(1);  // from the middle of anything, so nothing is unwound
}

void Role::TellPort(int port) {
    TellLine(QStringLiteral("port %1").arg(port));
}

void Role::TellResult(const Settings& result) {
    TellLine(QStringLiteral("result ") + result.Words().join(QLatin1Char(' ')));
}

void Role::TellStep() {
    TellLine(QStringLiteral("step"));
}

void Role::WaitForGo() {
    std::string line;
    if (!std::getline(std::cin, line)) Fail(QStringLiteral("nobody says go"));
}

}  // namespace bench
