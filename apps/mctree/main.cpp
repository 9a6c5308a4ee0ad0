// SPDX-License-Identifier: Apache-2.0
#include <apps/common/closedoutput.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/help.h>

#include <platform/app/errorhandler.h>
#include <platform/config/cfgcenter.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/values/tree.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStandardPaths>

using namespace mctree;

namespace {

/// Runs \a command with a session of \a client, which signals and the end of the output interrupt.
Outcome RunWith(IVtClient& client, const Arguments& arguments, Printer& printer) {
    const Report::Tell tell = [&printer](const QString& line) {
        printer.Flush();  // what was printed before stands before it
        terminal::WriteError(QStringLiteral("mctree: %1\n").arg(line).toUtf8());
    };
    Session session(client, arguments.Retry(), tell);
    const ShutdownSignals shutdown;
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, [&session] { session.Interrupt(); });
    const ClosedOutput output;
    QObject::connect(&output, &ClosedOutput::Closed, [&session] { session.Interrupt(); });
    return Run({arguments, session, printer, tell});
}

Outcome RunCommand(const Arguments& arguments, Printer& printer) {
    const values::Tree tree;
    if (arguments.server.isOverNats && !nats::IsBuiltIn())
        return {EExitCode::Usage, QStringLiteral("this build knows no NATS")};
    nats::RegisterScheme();
    VtClientCenter& center = VtClientCenter::Instance();
    center.SetOptions(arguments.client);
    IVtClient* const client =
        center.CreateVtClient(arguments.server.ToVtAddress().toLatin1().constData(), arguments.server.port);
    if (client == nullptr)
        return {EExitCode::Usage,
                QStringLiteral("\"%1\" cannot be a server's address").arg(arguments.server.host)};
    Outcome outcome = RunWith(*client, arguments, printer);
    center.DestroyVtClient(client);
    return outcome;
}

Outcome RunOrHelp(const Arguments& arguments, Printer& printer) {
    switch (arguments.command) {
        case ECommand::Help:
            printer.WriteLine(HelpText(arguments.topic).trimmed());
            return Outcome();
        case ECommand::Version:
            printer.WriteLine(QStringLiteral("mctree " MCS_VERSION));
            return Outcome();
        case ECommand::Stations:
            return RunStations(arguments, printer);
        default:
            return RunCommand(arguments, printer);
    }
}

Surroundings GetSurroundings() {
    const QString profiles = qEnvironmentVariable("MCTREE_PROFILES");
    const QString usual = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                          QStringLiteral("/MultiChannelServer/mctree.profiles");
    return {qEnvironmentVariable("MCS_TOKEN"), profiles.isEmpty() ? usual : profiles};
}

Outcome Main(const QStringList& words) {
    QString outputError;
    const auto write = [&outputError](const QByteArray& bytes) {
        return terminal::WriteOutput(bytes, &outputError);
    };
    Printer printer(write, {terminal::IsOutputTerminal(), terminal::TakesColour(), terminal::GetWidth()});
    Arguments arguments;
    Outcome outcome = ParseArguments(words, GetSurroundings(), &arguments);
    if (!outcome.IsDone()) {
        outcome.message += QStringLiteral(" (mctree --help tells more)");
        return outcome;
    }
    outcome = RunOrHelp(arguments, printer);
    printer.Flush();
    if (printer.IsOpen()) return outcome;
    // If the reader of a pipe has closed it, as `head` does, that is no failure. Anything else is.
    if (outputError.isEmpty()) return Outcome();
    return {EExitCode::Refused, QStringLiteral("the output cannot be written: ") + outputError};
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mctree"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCS_VERSION));
    CfgCenter::SetAppName(QStringLiteral("mctree"));
    // What went wrong is said in one line at the end; traces are for those who ask for them.
    if (!qEnvironmentVariableIsSet("MCS_TRACE")) ErrorHandler::Instance().SetTraceFlags(0);
    const Outcome outcome = Main(QCoreApplication::arguments().mid(1));
    if (!outcome.message.isEmpty())
        terminal::WriteError(QStringLiteral("mctree: %1\n").arg(outcome.message).toUtf8());
    return static_cast<int>(outcome.code);
}
