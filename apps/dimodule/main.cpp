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

int Complain(const QString& line, int code) {
    terminal::WriteError(QStringLiteral("dimodule: %1\n").arg(line).toUtf8());
    return code;
}

int Print(const QString& text) {
    QString error;
    // If the reader of a pipe has closed it, as `head` does, that is no failure. Anything else is.
    if (terminal::WriteOutput(text.toUtf8(), &error) || error.isEmpty()) return 0;
    return Complain(QStringLiteral("the output cannot be written: ") + error, ExitFailure);
}

/// Whole lines, out at once, so that whoever reads them through a pipe is up to date. The modules go on if
/// nobody does.
void PrintLine(const QString& line) {
    QString error;
    terminal::WriteOutput((line + QLatin1Char('\n')).toUtf8(), &error);
}

int Run(const ModuleOptions& options) {
    const ShutdownSignals shutdown;
    ModuleProgram program(options, PrintLine);
    QObject::connect(&program, &ModuleProgram::Quit, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QObject::connect(&program, &ModuleProgram::Failed, &program, [](const QString& error) {
        Complain(error, ExitFailure);
        QCoreApplication::exit(ExitFailure);
    });
    QString error;
    if (!program.Start(&error)) return Complain(error, ExitFailure);
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    const auto onLine = [&program](const QString& line) {
        const QString wrong = program.Do(line);
        if (!wrong.isEmpty()) Complain(wrong, ExitUsage);
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
    switch (options.action) {
        case ModuleOptions::EAction::Print:
            return Print(options.text);
        case ModuleOptions::EAction::Complain:
            return Complain(options.text + QStringLiteral(" (see --help)"), ExitUsage);
        case ModuleOptions::EAction::Run:
            break;
    }
    return Run(options);
}
