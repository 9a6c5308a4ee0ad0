// SPDX-License-Identifier: Apache-2.0
// Every text of the server's window in German while things happen, with a data module in a process of its
// own.
#include <apps/common/childprogram.h>
#include <apps/mcserver/program/serverprogram.h>
#include <apps/mcserver/program/serverwindow.h>
#include <apps/mcserver/suppression/inputmodel.h>
#include <apps/mcserver/suppression/recoverynotices.h>
#include <apps/mcserver/suppression/suppressionpage.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>
#include <apps/pages/mpxorvs/mpxorvcells.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/valueaccess.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/apps/mcconsole/ingerman.h>
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/dialogs/modaldriver.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QSysInfo>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <memory>

namespace {

class ServerWindowTexts : protected InGerman, public testing::Test {
  protected:
    ServerWindowTexts() {
        for (const QString& name :
             {QSysInfo::machineHostName(), QStringLiteral("mctree"), QStringLiteral("mcconsole_tests"),
              QStringLiteral("ADAM-6051"), QStringLiteral("Turm West"), QStringLiteral("operator"),
              QStringLiteral("DeviceName"), QStringLiteral("Mast 7")})
            english.Allow(name);
        WriteConfiguration();
        module.Start();
        qputenv("MCS_MODBUS_PORT", QByteArray::number(module.Port()));
        program = std::make_unique<ServerProgram>(Options());
        QString error;
        EXPECT_TRUE(program->Start(&error)) << error.toStdString();
        recovery.Begin();
        McsServer& server = program->GetServer();
        window = std::make_unique<ServerWindow>(QStringLiteral("Mast 7"), program->GetListener(),
                                                program->GetServer().GetLog());
        auto* const page = new SuppressionPage(recovery, server.GetJobs(), server.GetLog(),
                                               program->GetClock(), window.get());
        window->AddNotice(new RecoveryNotices(recovery.GetReport(), page->GetRecorder()));
        window->AddPage(page, "Suppression", ServerWindow::tr("Ground transmitters"));
        window->show();
    }
    ~ServerWindowTexts() override {
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (qobject_cast<QMessageBox*>(top) != nullptr) delete top;
        window.reset();
        program->Stop();
        program.reset();
        CfgCenter::SetAppName(QString());
        CfgCenter::Instance().SetStorePath(QString());
        qunsetenv("MCS_MODBUS_PORT");
    }

    ServerOptions Options() const {
        ServerOptions options;
        options.listen = {QStringLiteral("127.0.0.1"), 0};
        options.name = QStringLiteral("mcserver");
        options.configFile = directory.filePath(QStringLiteral("server.ini"));
        return options;
    }
    void WriteConfiguration() const {
        QFile file(directory.filePath(QStringLiteral("server.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            "[GTS]\n"
            "ModuleCount=1\n"
            "Module0\\Index=0\n"
            "Module0\\Name=ADAM-6051\n"
            "Module0\\Address=127.0.0.1\n"
            "Module0\\PollInterval=10\n"
            "Module0\\Assignments\\AssignmentCount=12\n"
            "Module0\\Assignments\\DI_3=121500000\n"
            "Module0\\Labels\\DI_3=Turm West\n"
            "[StaticMpxORVs]\n"
            "Names=Mast 7\n");
    }
    void Tree(const QStringList& words) const {
        ChildProgram client;
        client.Start(
            QStringLiteral(MCTREE),
            QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(program->GetPort())} +
                words);
        EXPECT_TRUE(ServerProcess::WaitFor([&] { return !client.IsRunning(); }));
    }
    static void Set(const char* below, const char* content, const ServerWindowTexts& test) {
        test.Tree({QStringLiteral("set"), QStringLiteral("/MultiChannelServer/") + QLatin1String(below),
                   QString::fromLatin1(content)});
    }
    static QString Text(const char* below) {
        const auto* const value = values::FindValue<values::Value<QString>>(
            mcskeys::Root + QLatin1Char('/') + QLatin1String(below), nullptr, nullptr);
        return value != nullptr ? value->GetValue() : QString();
    }
    static bool WaitForState(const char* state) {
        return ServerProcess::WaitFor(
            [state] { return Text("Status/Suppression/Modules/0/State") == QLatin1String(state); });
    }
    void Look(const char* moment) {
        auto* const pages = window->findChild<QTabWidget*>(QStringLiteral("Pages"));
        visibletexts::ForEachPage(*window, *pages, ReadAt(moment));
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (qobject_cast<QMessageBox*>(top) != nullptr) visibletexts::ForEach(*top, ReadAt(moment));
    }

    QTemporaryDir directory;
    ModuleProcess module;
    SuppressionRecovery recovery;
    std::unique_ptr<ServerProgram> program;
    std::unique_ptr<ServerWindow> window;
};

TEST_F(ServerWindowTexts, LeaveRoomForTheNamesOfInputs) {
    auto* const pages = window->findChild<QTabWidget*>(QStringLiteral("Pages"));
    pages->setCurrentIndex(pages->count() - 1);
    QCoreApplication::processEvents();
    const auto* const inputs = window->findChild<QTableView*>(QStringLiteral("Inputs"));
    const int wanted = inputs->fontMetrics().horizontalAdvance(QStringLiteral("Turm West, Reserve 2"));
    EXPECT_GE(inputs->columnWidth(InputModel::Name), wanted);
}

// The same list as on the consoles, in the server's own window.
TEST_F(ServerWindowTexts, OfTheListAreThoseOfTheConsoles) {
    const auto* const list = window->findChild<QTableView*>(QStringLiteral("MpxORVList"));
    ASSERT_NE(list, nullptr);
    const auto cell = [list](int column) { return list->model()->index(0, column).data().toString(); };
    ASSERT_TRUE(ServerProcess::WaitFor([&] { return list->model()->rowCount() == 1; }));
    EXPECT_EQ(cell(mpxorvcells::Name), QStringLiteral("Mast 7"));
    EXPECT_EQ(cell(mpxorvcells::Kind), QStringLiteral("statisch"));
    EXPECT_EQ(cell(mpxorvcells::Suppression), QStringLiteral("beachtet"));
    Set("StaticMpxORVs/Mast 7/Blanking", "false", *this);
    EXPECT_TRUE(ServerProcess::WaitFor(
        [&] { return cell(mpxorvcells::Suppression) == QLatin1String("missachtet"); }));
}

TEST_F(ServerWindowTexts, AreGermanWhileThingsHappen) {
    ASSERT_TRUE(WaitForState("Connected"));
    Look("at first");
    module.Say("key 3");
    ASSERT_TRUE(ServerProcess::WaitFor(
        [] { return Text("Status/Suppression/Modules/0/Inputs/3/KeyedSince") != QString(); }));
    Look("keyed");
    Set("StaticMpxORVs/Mast 7/Request/Frequency", "121500000", *this);
    Set("StaticMpxORVs/Mast 7/Request/Frequency", "118400000", *this);
    Look("tuned");
    Set("StaticMpxORVs/Mast 7/Blanking", "false", *this);
    Set("Config/DeviceName", "Mast", *this);
    Look("edited");
    module.Say("fault exception 6");
    ASSERT_TRUE(WaitForState("Error"));
    Look("the module is busy");
    module.Kill();
    Set("Command/ShallBeConnected", "false", *this);
    ASSERT_TRUE(ServerProcess::WaitFor(
        [] { return Text("Status/ConnectionState") == QLatin1String("not connected"); }));
    Look("the module is gone");
    EXPECT_GT(count, 500);
    EXPECT_EQ(faults, "");
}

}  // namespace
