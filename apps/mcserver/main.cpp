// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownsignals.h>
#include <apps/mcserver/serveroptions.h>
#include <apps/mcserver/serverprogram.h>
#include <apps/mcserver/standardstreams.h>

#include <QtCore/QCoreApplication>

namespace {

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

int Run(const ServerOptions& options) {
    const ShutdownSignals shutdown;
    ServerProgram program(options);
    QString error;
    if (!program.Start(&error)) {
        standardstreams::Complain(error);
        return ExitFailure;
    }
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    const int code = QCoreApplication::exec();
    program.Stop();
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mcserver"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCSERVER_VERSION));
    const ServerOptions options = ServerOptions::Parse(QCoreApplication::arguments());
    switch (options.action) {
        case ServerOptions::EAction::Print:
            standardstreams::Print(options.text);
            return 0;
        case ServerOptions::EAction::MakeToken:
            ServerProgram::MakeToken(options.user, options.role);
            return 0;
        case ServerOptions::EAction::Complain:
            standardstreams::Complain(options.text + QStringLiteral(" (see --help)"));
            return ExitUsage;
        case ServerOptions::EAction::Run:
            break;
    }
    return Run(options);
}
