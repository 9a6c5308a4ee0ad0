// SPDX-License-Identifier: Apache-2.0
#include "demo.h"
#include "democlient.h"

#include <apps/common/commandreader.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>

#include <platform/app/errorhandler.h>
#include <platform/config/cfgcenter.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

namespace {

int RunClient(const QString& name, const QString& address, int port) {
    nats::RegisterScheme();
    CfgCenter::SetAppName(name);
    // The demonstration tells of losses itself.
    ErrorHandler::Instance().SetTraceFlags(ErrorHandler::TraceAssertions);
    DemoClient client;
    if (!client.Connect(address, port))
        return terminal::Complain(QStringLiteral("there can be no server at %1").arg(address), 2);
    const CommandReader reader([&client](const QString& line) { client.Obey(line); }, QCoreApplication::quit);
    return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mcdemo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCS_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows a server, two clients and an operator at work, within a minute: in a terminal "
                       "and, where there is a "
                       "display, in windows."));
    parser.addHelpOption();
    parser.addVersionOption();
    QCommandLineOption client(QStringLiteral("client"), QStringLiteral("Be one of the clients."),
                              QStringLiteral("name"));
    QCommandLineOption port(QStringLiteral("port"), QStringLiteral("The server's port."),
                            QStringLiteral("port"));
    QCommandLineOption address(QStringLiteral("address"), QStringLiteral("The server's address."),
                               QStringLiteral("address"), QStringLiteral("127.0.0.1"));
    const QCommandLineOption overNats(
        QStringLiteral("nats"),
        QStringLiteral(
            "Bring the clients through a cluster of NATS, which the program deploy/nats/make-cluster "
            "sets up, and kill one of its nodes."),
        QStringLiteral("make-cluster"));
    client.setFlags(QCommandLineOption::HiddenFromHelp);
    address.setFlags(QCommandLineOption::HiddenFromHelp);
    port.setFlags(QCommandLineOption::HiddenFromHelp);
    const QCommandLineOption pictures(
        QStringLiteral("pictures"),
        QStringLiteral(
            "Where pictures of the windows are saved if there is no display; mcdemo-pictures unless "
            "given."),
        QStringLiteral("directory"), QStringLiteral("mcdemo-pictures"));
    parser.addOptions({client, address, port, pictures, overNats});
    parser.process(application);

    const ShutdownSignals signals;
    bool isStopped = false;
    QObject::connect(&signals, &ShutdownSignals::ShutdownRequested, &application, [&isStopped] {
        isStopped = true;
        QCoreApplication::quit();
    });
    if (parser.isSet(client))
        return RunClient(parser.value(client), parser.value(address), parser.value(port).toInt());
    Demo demo(parser.value(pictures), [&isStopped] { return isStopped; });
    if (parser.isSet(overNats)) {
        if (!nats::IsBuiltIn()) return terminal::Complain(QStringLiteral("this build knows no NATS"), 2);
        demo.UseNats(parser.value(overNats));
    }
    return demo.Run() ? 0 : 1;
}
