// SPDX-License-Identifier: Apache-2.0
// The suppression at work beside modules that fail in every way there is, for as long as one likes.
#include <tests/soak/soak.h>
#include <tests/soak/threadcount.h>
#include <tests/soak/words.h>

#include <apps/common/eventwait.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/values/tree.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr int ExitFindings = 1;
constexpr int ExitUsage = 2;
constexpr std::chrono::seconds StartPatience(60);

struct Number {
    const char* name;
    const char* help;
    int lowest;
    int highest;
    int* value;
};

/// False after a complaint.
bool ReadNumbers(const std::vector<Number>& numbers) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Runs the ground transmitter suppression beside simulated modules with all their faults, and an\n"
        "operator. Prints what became of each fault; fails if anything happened that must not."));
    parser.addHelpOption();
    for (const Number& number : numbers)
        parser.addOption(QCommandLineOption(QLatin1String(number.name), QLatin1String(number.help),
                                            QStringLiteral("N"), QString::number(*number.value)));
    parser.process(*QCoreApplication::instance());
    for (const Number& number : numbers) {
        bool isNumber = false;
        *number.value = parser.value(QLatin1String(number.name)).toInt(&isNumber);
        if (isNumber && *number.value >= number.lowest && *number.value <= number.highest) continue;
        std::fprintf(stderr, "--%s takes a number from %d to %d\n", number.name, number.lowest,
                     number.highest);
        return false;
    }
    return true;
}

/// Without what the offscreen platform says of each window.
void WriteMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (!text.startsWith(QLatin1String("This plugin does not support")))
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

/// What a server would find in its file.
void Configure(const soak::Settings& settings) {
    const auto provide = [](ICfg& cfg, const QString& name) {
        return std::unique_ptr<ICfg>(cfg.ProvideSection(name));
    };
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    provide(*root, QStringLiteral("Modbus"))
        ->WriteInt(QStringLiteral("ResponseTimeout"), settings.responseTimeout);
    const auto gts = provide(*root, gtskeys::Gts);
    gts->WriteInt(gtskeys::ModuleCount, settings.modules);
    for (int number = 0; number < settings.modules; ++number) {
        const auto module = provide(*gts, QString(gtskeys::Module).arg(number));
        module->WriteInt(gtskeys::Index, number);
        module->WriteString(gtskeys::Name, QStringLiteral("ADAM-6051"));
        module->WriteString(gtskeys::Address, soak::Plant::AddressOf(number));
        module->WriteInt(gtskeys::PollInterval, 10);
        const auto assignments = provide(*module, gtskeys::Assignments);
        assignments->WriteInt(gtskeys::AssignmentCount, soak::words::Inputs);
        for (int i = 0; i < soak::words::Inputs; ++i)
            assignments->WriteString(QString(gtskeys::Input).arg(i),
                                     QString::number(soak::Witness::FrequencyOf(number, i), 'f', 0));
    }
}

bool StartPlant(soak::Plant& plant) {
    if (!plant.Start()) {
        std::fprintf(stderr, "the simulated modules do not start\n");
        return false;
    }
    std::mt19937 random;
    for (int number = 0; number < plant.Count(); ++number) {
        plant.SetStates(number, soak::words::Draw(random));
        if (!eventwait::Until([&] { return plant.HasStates(number); }, StartPatience)) {
            std::fprintf(stderr, "the simulated modules do not take their states\n");
            return false;
        }
    }
    qputenv("MCS_MODBUS_PORT", QByteArray::number(plant.Port()));
    return true;
}

/// A thread that was waited for may take a moment until the system has forgotten it.
bool HaveThreadsEnded(int before) {
    QDeadlineTimer deadline(10000);
    while (CountThreads() > before && !deadline.hasExpired())
        std::this_thread::yield();
    return CountThreads() <= before;
}

int Run(const soak::Settings& settings) {
    const QTemporaryDir directory;
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("soak.ini")));
    Configure(settings);
    const values::Tree tree;
    soak::Plant plant(settings.modules);
    if (!StartPlant(plant)) return ExitFindings;

    std::thread([] {}).join();  // sanitizers add one of their own with the first
    const int threads = CountThreads();
    soak::Soak work(settings, plant);
    QObject::connect(&work, &soak::Soak::Finished, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
    QStringList findings = work.Findings();
    if (!HaveThreadsEnded(threads))
        findings += QStringLiteral("%1 threads are left").arg(CountThreads() - threads);
    std::printf("%s%d findings\n", qPrintable(work.Report()), findings.size());
    for (const QString& finding : findings)
        std::fprintf(stderr, "%s\n", qPrintable(finding));
    return findings.isEmpty() ? 0 : ExitFindings;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(WriteMessage);
    // Errors are what this is about.
    if (qEnvironmentVariableIsEmpty("MCS_TRACE")) qputenv("MCS_TRACE", "2");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale::c());
    soak::Settings settings;
    int seed = 1;
    const std::vector<Number> numbers = {{"seconds", "How long.", 1, 7 * 24 * 3600, &settings.seconds},
                                         {"modules", "How many.", 1, 200, &settings.modules},
                                         {"response-timeout", "In ms.", 50, 60000, &settings.responseTimeout},
                                         {"seed", "What random numbers start from.", 0, 1000000, &seed}};
    if (!ReadNumbers(numbers)) return ExitUsage;
    settings.seed = static_cast<unsigned>(seed);
    return Run(settings);
}
