// SPDX-License-Identifier: Apache-2.0
#include <apps/common/descriptorlimit.h>
#include <apps/common/display.h>
#include <apps/common/eventdispatcher.h>
#include <apps/common/shutdownsignals.h>
#include <apps/common/terminal.h>
#include <apps/mcserver/device/simulatedorv.h>
#include <apps/mcserver/log/messagelimiter.h>
#include <apps/mcserver/program/serveroptions.h>
#include <apps/mcserver/program/serverprogram.h>
#include <apps/mcserver/program/serverwindow.h>
#include <apps/mcserver/program/servicecontrol.h>
#include <apps/mcserver/suppression/configfaults.h>
#include <apps/mcserver/suppression/faultnotice.h>
#include <apps/mcserver/suppression/recoverynotices.h>
#include <apps/mcserver/suppression/suppressionalarm.h>
#include <apps/mcserver/suppression/suppressionduties.h>
#include <apps/mcserver/suppression/suppressionpage.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>
#include <apps/pages/guimodule.h>
#include <apps/pages/keptview.h>
#include <apps/pages/pictures.h>
#include <apps/pages/restingcursor.h>

#include <devicecontrol/multichannelserver/common/gts/headlesssuppression.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/widgets/screenfit.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr int ExitFailure = 1;

/// The exit code \a code, unless the last changes of the configuration are lost: once all is gone that saves.
/// What \a recovery has is needed until then.
int Finish(int code, SuppressionRecovery& recovery) {
    const QString problem = CfgCenter::Instance().Finish();
    if (!problem.isEmpty()) return terminal::Complain(problem, ExitFailure);
    const QString left = recovery.End();
    return left.isEmpty() ? code : terminal::Complain(left, code);
}

/// Looks, once the server has its configuration, for what was entered before it was killed.
SuppressionRecovery::EOutcome Recover(SuppressionRecovery& recovery, ServerLog& log) {
    const SuppressionRecovery::Report& report = recovery.Begin();
    const CodedText text = report.ToText();
    if (!text.IsEmpty()) log.Write(text);
    return report.outcome;
}

/// Runs until the server is told to end.
int RunHeadless(const ServerOptions& options, SuppressionRecovery& recovery) {
    const ShutdownSignals shutdown(ShutdownSignals::EHangUp::IsTold);
    ServerProgram program(options);
    QString error;
    if (!program.Start(&error)) return terminal::Complain(error, ExitFailure);
    std::optional<HeadlessSuppression> suppression;
    std::optional<SuppressionDuties> duties;
    std::optional<SuppressionStatus> noSuppression;
    McsServer& server = program.GetServer();
    configfaults::TellAll(server.GetLog());
    const bool isRecovered = Recover(recovery, server.GetLog()) == SuppressionRecovery::EOutcome::TakenOver;
    if (isRecovered || SuppressionPlant::IsConfigured()) {
        suppression.emplace();
        duties.emplace(suppression->GetPlant(), recovery, server.GetJobs(), server.GetLog(),
                       program.GetClock());
    } else {
        noSuppression.emplace(nullptr, program.GetClock());
    }
    QObject::connect(&shutdown, &ShutdownSignals::HungUp, [&program] { program.ReadFilesAnew(); });
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    const int code = QCoreApplication::exec();
    program.Stop();
    return code;
}

/// Takes pictures of \a window once the simulated device has booted, and closes it. \a error is what holds
/// until then, and at last empty.
void TakePictures(ServerWindow& window, const QString& directory, QString* error) {
    constexpr std::chrono::milliseconds bootTime = 2 * SimulatedOrv::BootTime;
    *error = QStringLiteral("ended before the pictures were taken");
    QTimer::singleShot(bootTime, &window, [&window, directory, error] {
        *error = pictures::SavePages(window, *window.GetTabs(), directory, QStringLiteral("server-"));
        window.CloseNow();
    });
}

/// Runs until the window is closed, or the server told to end.
int RunWithWindow(const ServerOptions& options, SuppressionRecovery& recovery) {
    const ShutdownSignals shutdown(ShutdownSignals::EHangUp::IsTold);
    const GuiModule module{QString()};
    ServerProgram program(options);
    QString error;
    if (!program.Start(&error)) return terminal::Complain(error, ExitFailure);
    McsServer& server = program.GetServer();
    const std::vector<CodedText> faults = configfaults::TellAll(server.GetLog());
    Recover(recovery, server.GetLog());
    const RestingCursor cursor(program.GetClock());
    ServerWindow window(options.name, program.GetListener(), server.GetLog());
    auto* const page =
        new SuppressionPage(recovery, server.GetJobs(), server.GetLog(), program.GetClock(), &window);
    window.AddNotice(new FaultNotice(faults));
    window.AddNotice(new RecoveryNotices(recovery.GetReport(), page->GetRecorder()));
    window.SetObstacleOfSaving([page] { return page->GetRecorder().GetObstacleOfSaving(); });
    auto* const alarm = new SuppressionAlarm(page->GetPlant());
    QObject::connect(alarm, &SuppressionAlarm::Judged, &window, &ServerWindow::ShowState);
    window.AddNotice(alarm);
    window.AddPage(page, "Suppression", ServerWindow::tr("Ground transmitters"));
    QObject::connect(&shutdown, &ShutdownSignals::HungUp, [&program] { program.ReadFilesAnew(); });
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, &window, &ServerWindow::CloseNow);
    const std::unique_ptr<ICfg> cfg(CfgCenter::Instance().OpenRoot());
    if (options.screenshotDirectory.isEmpty()) {
        keptview::Restore(*cfg, *window.GetTabs());
        new WindowPlacement(QStringLiteral("ServerWindow"), &window, nullptr);
        screenfit::BringOntoScreen(window);
    } else {
        TakePictures(window, options.screenshotDirectory, &error);
    }
    window.show();
    const int code = QCoreApplication::exec();
    if (options.screenshotDirectory.isEmpty()) keptview::Keep(*cfg, *window.GetTabs());
    module.CommitData();
    program.Stop();
    return error.isEmpty() ? code : terminal::Complain(error, ExitFailure);
}

/// Says that something is done, or complains of \a problem.
int Answer(const QString& problem, const QString& done) {
    return problem.isEmpty() ? terminal::Print(done + QLatin1Char('\n'))
                             : terminal::Complain(problem, ExitFailure);
}

int InstallService(const ServerOptions& options, int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList arguments = options.serviceArguments;
    if (options.configFile.isEmpty())
        arguments << QStringLiteral("--config") << servicecontrol::ConfigFile(options.name);
    return Answer(
        servicecontrol::Install(options.name, arguments),
        QStringLiteral(
            "the service '%1' is installed and starts with the system, or at once by: sc start \"%1\"")
            .arg(options.name));
}

ServerOptions ParseArguments(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return ServerOptions::Parse(QCoreApplication::arguments());
}

int RunProgram(const ServerOptions& options, int& argc, char** argv) {
    SuppressionRecovery recovery;
    if (options.isHeadless || !HasDisplay()) {
        if (!options.screenshotDirectory.isEmpty())
            return terminal::Complain(QStringLiteral("there is no display to take pictures of"), ExitFailure);
        UseQtEventDispatcher();
        const QCoreApplication application(argc, argv);
        return Finish(RunHeadless(options, recovery), recovery);
    }
    const QString problem = GetDisplayProblem();
    if (!problem.isEmpty())
        return terminal::Complain(problem + QStringLiteral("; --headless needs none"), ExitFailure);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // 150 % are not to be 200 %: the window would not fit the screen.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    return Finish(RunWithWindow(options, recovery), recovery);
}

int Run(const ServerOptions& options, int& argc, char** argv) {
    switch (options.service) {
        case ServerOptions::EService::Install:
            return InstallService(options, argc, argv);
        case ServerOptions::EService::Remove:
            return Answer(servicecontrol::Remove(options.name),
                          QStringLiteral("the service '%1' is removed; its files stay").arg(options.name));
        case ServerOptions::EService::Run:
            return servicecontrol::Run(options.name, [&] { return RunProgram(options, argc, argv); });
        case ServerOptions::EService::None:
            break;
    }
    return RunProgram(options, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    terminal::Prepare();
    MessageLimiter::Install();
    RaiseDescriptorLimit();
    QCoreApplication::setApplicationName(QStringLiteral("mcserver"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MCSERVER_VERSION));
    const ServerOptions options = ParseArguments(argc, argv);
    if (options.action != ServerOptions::EAction::Run) return options.Answer();
    if (options.makesToken) return terminal::Print(ServerProgram::MakeToken(options.user, options.role));
    return Run(options, argc, argv);
}
