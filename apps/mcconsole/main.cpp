// SPDX-License-Identifier: Apache-2.0
#include <apps/common/display.h>
#include <apps/common/qtclock.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>
#include <apps/mcconsole/consoleoptions.h>
#include <apps/mcconsole/consolewindow.h>
#include <apps/mcconsole/screenshots.h>
#include <apps/pages/guimodule.h>
#include <apps/pages/restingcursor.h>

#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/nats/natsscheme.h>
#include <platform/values/tree.h>
#include <platform/widgets/screenfit.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <memory>

namespace {

constexpr int ExitFailure = 1;

bool IsDarkConfigured() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    return root->ReadBool(QStringLiteral("DarkColours"), false);
}

int TakeScreenshots(ConsoleWindow& window, const QString& directory) {
    QString problem = QStringLiteral("ended before the pictures were taken");
    Screenshots screenshots(window, directory);
    QObject::connect(&screenshots, &Screenshots::Finished, &window, [&problem](const QString& error) {
        problem = error;
        QCoreApplication::quit();
    });
    const int code = QApplication::exec();
    return problem.isEmpty() ? code : terminal::Complain(problem, ExitFailure);
}

int Run(const ConsoleOptions& options) {
    CfgCenter::Instance().SetStorePath(options.configFile);
    const GuiModule module(options.locale);
    const values::Tree tree;
    const ShutdownSignals shutdown;
    QtClock clock;
    const RestingCursor cursor(clock);
    nats::RegisterScheme();
    ConsoleWindow window(options.client);
    window.SetMpxOrvName(options.mpxOrvName);
    if (options.isEncrypted) window.PreferEncryption();
    window.ShowDark(options.isDark || IsDarkConfigured());
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, &window, &ConsoleWindow::CloseNow);
    const bool isForPictures = !options.screenshotDirectory.isEmpty();
    if (!isForPictures) {
        new WindowPlacement(QStringLiteral("ConsoleWindow"), &window, nullptr);
        screenfit::BringOntoScreen(window);
    }
    window.show();
    for (const ServerAddress& server : options.servers)
        window.Open(server, options.client);
    if (options.servers.empty() && !window.OpenKept())
        QTimer::singleShot(0, &window, &ConsoleWindow::AskForServer);
    if (isForPictures) return TakeScreenshots(window, options.screenshotDirectory);
    const int code = QApplication::exec();
    module.CommitData();
    return code;
}

/// The exit code \a code, unless the last changes of the configuration are lost: once all is gone that saves.
int Finish(int code) {
    const QString problem = CfgCenter::Instance().Finish();
    return problem.isEmpty() ? code : terminal::Complain(problem, ExitFailure);
}

/// The command line is answered also where no window can be shown.
ConsoleOptions ParseArguments(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return ConsoleOptions::Parse(QCoreApplication::arguments(), qEnvironmentVariable("MCS_TOKEN"));
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    QCoreApplication::setApplicationName(QStringLiteral("mcconsole"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCS_VERSION));
    const ConsoleOptions options = ParseArguments(argc, argv);
    if (options.action != ConsoleOptions::EAction::Run) return options.Answer();
    if (!HasDisplay())
        return terminal::Complain(QStringLiteral("there is no display to show a window on"), ExitFailure);
    const QString problem = GetDisplayProblem();
    if (!problem.isEmpty()) return terminal::Complain(problem, ExitFailure);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // 150 % are not to be 200 %: the window would not fit the screen.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    return Finish(Run(options));
}
