// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>
#include <apps/mcserver/serveroptions.h>
#include <apps/mcserver/serverprogram.h>

#include <QtCore/QCoreApplication>

namespace {

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

int Complain(const QString& line, int code) {
    terminal::WriteError(QStringLiteral("mcserver: %1\n").arg(line).toUtf8());
    return code;
}

int Print(const QString& text) {
    QString error;
    // A reader that has gone has seen enough. Anything else is a failure.
    if (terminal::WriteOutput(text.toUtf8(), &error) || error.isEmpty()) return 0;
    return Complain(QStringLiteral("the output cannot be written: ") + error, ExitFailure);
}

int Run(const ServerOptions& options) {
    const ShutdownSignals shutdown;
    ServerProgram program(options);
    QString error;
    if (!program.Start(&error)) return Complain(error, ExitFailure);
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    const int code = QCoreApplication::exec();
    program.Stop();
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mcserver"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCSERVER_VERSION));
    const ServerOptions options = ServerOptions::Parse(QCoreApplication::arguments());
    switch (options.action) {
        case ServerOptions::EAction::Print:
            return Print(options.text);
        case ServerOptions::EAction::MakeToken:
            return Print(ServerProgram::MakeToken(options.user, options.role));
        case ServerOptions::EAction::Complain:
            return Complain(options.text + QStringLiteral(" (see --help)"), ExitUsage);
        case ServerOptions::EAction::Run:
            break;
    }
    return Run(options);
}
