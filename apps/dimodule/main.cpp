// SPDX-License-Identifier: Apache-2.0
#include <apps/common/commandreader.h>
#include <apps/common/descriptorlimit.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>
#include <apps/dimodule/moduleprogram.h>

#include <QtCore/QCoreApplication>

using namespace dimodule;

namespace {

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

/// Whole lines, out at once, so that whoever reads them through a pipe is up to date. The modules go on if
/// nobody does.
void PrintLine(const QString& line) {
    terminal::PutOutput((line + QLatin1Char('\n')).toUtf8());
}

int Run(const ModuleOptions& options) {
    const ShutdownSignals shutdown;
    ModuleProgram program(options, PrintLine);
    QObject::connect(&program, &ModuleProgram::Quit, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QObject::connect(&program, &ModuleProgram::Failed, &program, [](const QString& error) {
        terminal::Complain(error, ExitFailure);
        QCoreApplication::exit(ExitFailure);
    });
    QString error;
    if (!program.Start(&error)) return terminal::Complain(error, ExitFailure);
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    const auto onLine = [&program](const QString& line) {
        const QString wrong = program.Do(line);
        if (!wrong.isEmpty()) terminal::Complain(wrong, ExitUsage);
    };
    // The end of the input is not the end of the modules: they may have been started without a terminal.
    const CommandReader commands(onLine, [] {});
    return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    RaiseDescriptorLimit();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("dimodule"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCS_VERSION));
    const ModuleOptions options = ModuleOptions::Parse(QCoreApplication::arguments());
    if (options.action != ModuleOptions::EAction::Run) return options.Answer();
    return Run(options);
}
