// SPDX-License-Identifier: Apache-2.0
#include "demo.h"
#include "democlient.h"

#include <apps/common/commandreader.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>

#include <platform/app/errorhandler.h>
#include <platform/config/cfgcenter.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

namespace {

int RunClient(const QString& name, int port) {
    CfgCenter::SetAppName(name);
    // The demonstration tells of losses itself.
    ErrorHandler::Instance().SetTraceFlags(ErrorHandler::TraceAssertions);
    DemoClient client;
    if (!client.Connect(QStringLiteral("127.0.0.1"), port))
        return terminal::Complain(QStringLiteral("there can be no server at port %1").arg(port), 2);
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
    client.setFlags(QCommandLineOption::HiddenFromHelp);
    port.setFlags(QCommandLineOption::HiddenFromHelp);
    const QCommandLineOption pictures(
        QStringLiteral("pictures"),
        QStringLiteral(
            "Where pictures of the windows are saved if there is no display; mcdemo-pictures unless "
            "given."),
        QStringLiteral("directory"), QStringLiteral("mcdemo-pictures"));
    parser.addOptions({client, port, pictures});
    parser.process(application);

    const ShutdownSignals signals;
    bool isStopped = false;
    QObject::connect(&signals, &ShutdownSignals::ShutdownRequested, &application, [&isStopped] {
        isStopped = true;
        QCoreApplication::quit();
    });
    if (parser.isSet(client)) return RunClient(parser.value(client), parser.value(port).toInt());
    Demo demo(parser.value(pictures), [&isStopped] { return isStopped; });
    return demo.Run() ? 0 : 1;
}
