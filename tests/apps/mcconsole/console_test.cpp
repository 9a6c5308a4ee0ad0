// SPDX-License-Identifier: Apache-2.0
// The console's window against a server in a process of its own: driven by mouse and keyboard, and what is
// read is what the operator sees.
#include <apps/pages/noticebar.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/support/spoken.h>

#include <gmock/gmock.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolButton>

namespace {

QMenu* OpenMenu(const ConsoleWindow& window, const char* button) {
    window.findChild<QToolButton*>(QString::fromLatin1(button))->click();
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

constexpr char StaticMpxOrvs[] = "[StaticMpxORVs]\nNames=\"Tower, Van 1\"\n";

TEST_F(ConsoleTest, SaysThatItIsNotConnected) {
    EXPECT_TRUE(Banner()->isVisible());
    EXPECT_EQ(Banner()->text(), QStringLiteral("Not connected: choose Server, Connect."));
    EXPECT_EQ(Label("Status", "onlineDisp"), QStringLiteral("- - -"));
}

TEST_F(ConsoleTest, ShowsWhatTheServerDoes) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    EXPECT_FALSE(Banner()->isVisible());
    EXPECT_EQ(Label("Status", "nummberOfORVsDisp"), QStringLiteral("0 static and 1 dynamic"));
    const auto* const connection = window->findChild<QLabel*>(QStringLiteral("Connection"));
    EXPECT_EQ(connection->text(), QStringLiteral("Connected to 127.0.0.1:%1").arg(server.Port()));
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("Client"))->text(), QStringLiteral("TestConsole"));
}

TEST_F(ConsoleTest, FollowsAChangeBothWays) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    const QString path = QStringLiteral("/MultiChannelServer/Config/DeviceName");
    auto* const name = Find<QLineEdit>("Configuration", "deviceNameDisp");
    Type(name, "Mast 7");
    EXPECT_TRUE(WaitFor([&] { return Tree({QStringLiteral("get"), path}) == QLatin1String("Mast 7"); }));
    Tree({QStringLiteral("set"), path, QStringLiteral("Mast 8")});
    EXPECT_TRUE(WaitFor([&] { return name->text() == QLatin1String("Mast 8"); }));
}

TEST_F(ConsoleTest, DisconnectsTheServerFromItsDevice) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    auto* const box = Find<QCheckBox>("Commands", "shallBeConnectedState");
    ASSERT_TRUE(box->isChecked());
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    EXPECT_FALSE(box->isEnabled());
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Offline"); }));
    EXPECT_TRUE(WaitFor([&] { return box->isEnabled(); }));
    EXPECT_FALSE(box->isChecked());
}

TEST_F(ConsoleTest, OffersToReconnectModulesOnlyWhereTheServerHasSome) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_TRUE(
        WaitFor([this] { return Find<QCheckBox>("Commands", "shallBeConnectedState")->isEnabled(); }));
    EXPECT_FALSE(Find<QPushButton>("Commands", "ReconnectModulesButton")->isVisible());
}

TEST_F(ConsoleTest, ReconnectsTheModulesOfTheServer) {
    server.WriteFile(QStringLiteral("mcserver.ini"),
                     "[GTS]\n"
                     "ModuleCount=1\n"
                     "Module0\\Index=0\n"
                     "Module0\\Name=ADAM-6051\n"
                     "Module0\\Address=nowhere\n"
                     "Module0\\PollInterval=10\n");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const button = Find<QPushButton>("Commands", "ReconnectModulesButton");
    ASSERT_TRUE(WaitFor([&] { return button->isVisible() && button->isEnabled(); }));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(WaitFor([this] {
        return server.Output().contains(QStringLiteral("data modules in error are connected anew"));
    }));
    EXPECT_TRUE(WaitFor([&] { return !button->isDown(); }));
}

TEST_F(ConsoleTest, TunesItsOwnMpxOrvAndShowsTheAnswers) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    auto* const answers = Find<QTextEdit>("MyMpxORV", "LogTextEdit");
    Type(Find<QLineEdit>("MyMpxORV", "Frequency"), "121.5");
    EXPECT_TRUE(
        WaitFor([&] { return answers->toPlainText().contains(QLatin1String("tuned to 121.5 MHz")); }));
    QTest::mouseClick(Find<QPushButton>("MyMpxORV", "BuiltInTest"), Qt::LeftButton);
    EXPECT_TRUE(WaitFor([&] {
        return answers->toPlainText().contains(QLatin1String("refused: needs \"May run built-in tests\""));
    }));
}

TEST_F(ConsoleTest, AsksOnceMoreForTheFrequencyThatItHas) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    auto* const answers = Find<QTextEdit>("MyMpxORV", "LogTextEdit");
    auto* const field = Find<QLineEdit>("MyMpxORV", "Frequency");
    auto* const tune = Find<QPushButton>("MyMpxORV", "Tune");
    const auto answered = [&](int times) {
        return WaitFor([&] { return answers->toPlainText().count(QLatin1String("tuned to 100")) == times; });
    };
    QTest::mouseClick(field, Qt::LeftButton);
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("100"));
    QTest::mouseClick(tune, Qt::LeftButton);
    EXPECT_TRUE(answered(1)) << answers->toPlainText().toStdString();
    QTest::mouseClick(tune, Qt::LeftButton);
    EXPECT_TRUE(answered(2)) << answers->toPlainText().toStdString();
}

TEST_F(ConsoleTest, SwitchesAPolicyOfAnotherMpxOrv) {
    server.WriteFile(QStringLiteral("mcserver.ini"), StaticMpxOrvs);
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const list = Find<QTableView>("MpxORVs", "MpxORVList");
    ASSERT_TRUE(WaitFor([&] { return list->model()->rowCount() == 3; }));
    list->selectRow(1);
    auto* const box = Page("MpxORVs")->findChild<QCheckBox*>(QStringLiteral("MayBIT"));
    ASSERT_FALSE(box->isChecked());
    QTest::keyClick(box, Qt::Key_Space);
    const QString path = QStringLiteral("/MultiChannelServer/StaticMpxORVs/Van 1/Policy/MayBIT");
    EXPECT_TRUE(WaitFor([&] { return Tree({QStringLiteral("get"), path}) == QLatin1String("true"); }));
    EXPECT_TRUE(box->isChecked());
}

TEST_F(ConsoleTest, ShowsThePoliciesOfTheSameMpxOrvOnceTheServerIsBack) {
    server.WriteFile(QStringLiteral("mcserver.ini"), StaticMpxOrvs);
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const list = Find<QTableView>("MpxORVs", "MpxORVList");
    const auto* const details = Find<QGroupBox>("MpxORVs", "MpxORVDetails");
    ASSERT_TRUE(WaitFor([&] { return list->model()->rowCount() == 3; }));
    list->selectRow(1);
    ASSERT_EQ(details->title(), QStringLiteral("Van 1"));
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    EXPECT_EQ(details->title(), QStringLiteral("Van 1")) << "the last content is kept";
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    ASSERT_TRUE(WaitFor([&] { return list->model()->rowCount() == 3; }));
    EXPECT_EQ(details->title(), QStringLiteral("Van 1"));
}

TEST_F(ConsoleTest, LocksThePoliciesOfItsOwnMpxOrvAndSaysWhy) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    for (const char* const page : {"MpxORVs", "MyMpxORV"}) {
        auto* const box = Page(page)->findChild<QCheckBox*>(QStringLiteral("MayBIT"));
        EXPECT_TRUE(WaitFor([&] {
            return box->accessibleName() == QLatin1String("May run built-in tests (locked)");
        })) << page;
        EXPECT_EQ(box->toolTip(), QStringLiteral("nobody switches the policies of an MpxORV that it uses"));
        EXPECT_FALSE(box->icon().isNull());
        EXPECT_TRUE(WaitFor([&] { return box->accessibleDescription().isEmpty(); })) << "it is live";
        QTest::keyClick(box, Qt::Key_Space);
        EXPECT_FALSE(box->isChecked());
        EXPECT_TRUE(box->accessibleDescription().isEmpty()) << "the server was not even asked";
    }
    EXPECT_EQ(Find<QCheckBox>("MpxORVs", "Blanking")->accessibleName(),
              QStringLiteral("Obeys the ground transmitter suppression (locked)"));
}

TEST_F(ConsoleTest, DoesNotLockThePoliciesOfOthers) {
    server.WriteFile(QStringLiteral("mcserver.ini"), StaticMpxOrvs);
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const list = Find<QTableView>("MpxORVs", "MpxORVList");
    ASSERT_TRUE(WaitFor([&] { return list->model()->rowCount() == 3; }));
    list->selectRow(2);
    auto* const box = Page("MpxORVs")->findChild<QCheckBox*>(QStringLiteral("MayBIT"));
    ASSERT_TRUE(WaitFor([&] { return !box->icon().isNull(); }));
    list->selectRow(1);
    EXPECT_TRUE(box->icon().isNull());
    EXPECT_EQ(box->accessibleName(), QStringLiteral("May run built-in tests"));
}

TEST_F(ConsoleTest, ShowsThatTheServerIsLostAndComesBackByItself) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const box = Find<QCheckBox>("Commands", "shallBeConnectedState");
    ASSERT_TRUE(box->isEnabled());
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    EXPECT_TRUE(Banner()->text().contains(QLatin1String(" is lost: "))) << Banner()->text().toStdString();
    EXPECT_FALSE(box->accessibleDescription().isEmpty()) << "it says that it is not connected";
    EXPECT_EQ(Label("Status", "onlineDisp"), QStringLiteral("Online")) << "the last content is kept";
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    EXPECT_TRUE(WaitFor([&] { return box->accessibleDescription().isEmpty(); }));
    EXPECT_TRUE(WaitFor([this] { return !window->GetSession().GetMpxOrvPath().isEmpty(); }));
}

TEST_F(ConsoleTest, GivesItsMpxOrvBackAndTakesItAgain) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    const QStringList list{QStringLiteral("ls"), QStringLiteral("/MultiChannelServer/DynamicMpxORVs")};
    ASSERT_TRUE(Tree(list).contains(QLatin1String("TestConsole")));
    auto* const box = Find<QCheckBox>("MyMpxORV", "UseMpxORV");
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_TRUE(WaitFor([&] { return !Tree(list).contains(QLatin1String("TestConsole")); }));
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_TRUE(WaitFor([&] { return Tree(list).contains(QLatin1String("TestConsole")); }));
}

TEST_F(ConsoleTest, GivesItsMpxOrvBackToWhoeverSwitchesByAssistiveTechnology) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    spoken::Toggle(*Find<QCheckBox>("MyMpxORV", "UseMpxORV"));
    EXPECT_TRUE(WaitFor([this] { return !window->GetSession().UsesMpxOrv(); }));
}

TEST_F(ConsoleTest, ShowsWhatAViewerMaySee) {
    ServerProcess maker;
    ASSERT_EQ(maker.Run({QStringLiteral("--make-token"), QStringLiteral("eve"), QStringLiteral("viewer")}),
              0);
    const QString token = maker.Output().section(QLatin1Char('\n'), 0, 0).section(QLatin1Char(' '), 1);
    const QString line = maker.Output().section(QLatin1Char('\n'), 1, 1).section(QStringLiteral(": "), 1);
    server.WriteFile(QStringLiteral("access"),
                     "allow viewer read /MultiChannelServer/Status\n" + line.toUtf8() + '\n');
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    VtClientOptions options;
    options.user = QStringLiteral("eve");
    options.token = token;
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, options);
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    EXPECT_EQ(Find<QLineEdit>("Configuration", "deviceNameDisp")->text(), QString());
    EXPECT_FALSE(Find<QCheckBox>("Commands", "shallBeConnectedState")->isEnabled());
}

TEST_F(ConsoleTest, SaysWhyItIsNotLetIn) {
    server.WriteFile(QStringLiteral("access"), "allow viewer read /MultiChannelServer/Status\n");
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, VtClientOptions());
    EXPECT_TRUE(WaitFor([this] {
        return Banner()->text().contains(QLatin1String("user or token is wrong"));
    })) << Banner()->text().toStdString();
}

TEST_F(ConsoleTest, TellsTheSituationInTitleAndStrip) {
    const QString title = window->windowTitle();
    EXPECT_EQ(title, QStringLiteral("Multi-channel console"));
    EXPECT_FALSE(window->windowIcon().isNull());
    const qint64 icon = window->windowIcon().cacheKey();
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    Tree({QStringLiteral("set"), QStringLiteral("/MultiChannelServer/Config/DeviceName"),
          QStringLiteral("mast-north")});
    EXPECT_TRUE(
        WaitFor([this] { return window->windowTitle() == QStringLiteral("TestConsole \u00b7 mast-north"); }));
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    Type(Find<QLineEdit>("MyMpxORV", "Frequency"), "121.5");
    EXPECT_TRUE(WaitFor([this] {
        return window->windowTitle() == QStringLiteral("TestConsole \u00b7 121.5 MHz \u00b7 mast-north");
    }));
    EXPECT_TRUE(WaitFor([&] { return window->windowIcon().cacheKey() != icon; }));
    server.Kill();
    EXPECT_TRUE(WaitFor([this] {
        return window->windowTitle() ==
               QStringLiteral("TestConsole \u00b7 121.5 MHz \u00b7 mast-north is lost");
    }));
}

TEST_F(ConsoleTest, CallsTheServerAsItsAdministratorDoesAlsoWhileItIsLost) {
    ASSERT_NO_FATAL_FAILURE(server.Start({QStringLiteral("--name"), QStringLiteral("Tower 1")}));
    window->SetMpxOrvName(QStringLiteral("Anna"));
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, VtClientOptions());
    EXPECT_TRUE(WaitFor([this] { return window->windowTitle() == QStringLiteral("Anna \u00b7 Tower 1"); }))
        << window->windowTitle().toStdString();
    server.Kill();
    EXPECT_TRUE(WaitFor([this] {
        return window->windowTitle() == QStringLiteral("Anna \u00b7 Tower 1 is lost");
    })) << window->windowTitle().toStdString();
}

TEST_F(ConsoleTest, LeadsFromTheStripToThePageOfTheCause) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    Page("Log");
    QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("OwnState")), Qt::LeftButton);
    EXPECT_EQ(window->GetTabs()->currentWidget()->objectName(), QStringLiteral("MyMpxORV"));
    QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("MasterState")), Qt::LeftButton);
    EXPECT_EQ(window->GetTabs()->currentWidget()->objectName(), QStringLiteral("MpxORVs"));
}

TEST_F(ConsoleTest, BeginsWithTheOverviewAndThenWithThePageSeenLast) {
    EXPECT_EQ(window->GetTabs()->currentWidget()->objectName(), QStringLiteral("Overview"));
    Page("Log");
    window->CloseNow();
    window = std::make_unique<ConsoleWindow>(VtClientOptions());
    EXPECT_EQ(window->GetTabs()->currentWidget()->objectName(), QStringLiteral("Log"));
}

TEST_F(ConsoleTest, KeepsTheStepOfFrequencies) {
    auto* const step = Find<QComboBox>("Overview", "Step");
    const QString before = step->currentText();
    step->setFocus();
    QTest::keyClick(step, Qt::Key_Down);
    const QString chosen = step->currentText();
    EXPECT_NE(chosen, before);
    EXPECT_EQ(Find<QComboBox>("MyMpxORV", "Step")->currentText(), chosen) << "there is one step";
    window->CloseNow();
    window = std::make_unique<ConsoleWindow>(VtClientOptions());
    EXPECT_EQ(Find<QComboBox>("Overview", "Step")->currentText(), chosen);
}

TEST_F(ConsoleTest, KeepsTheColumnsOfTables) {
    auto* const table = Find<QTableView>("MpxORVStatus", "MCSMpxORVStatusListView");
    table->horizontalHeader()->resizeSection(0, 177);
    window->CloseNow();
    window = std::make_unique<ConsoleWindow>(VtClientOptions());
    const auto* const header =
        Find<QTableView>("MpxORVStatus", "MCSMpxORVStatusListView")->horizontalHeader();
    EXPECT_EQ(header->sectionSize(0), 177);
}

TEST_F(ConsoleTest, KeepsTheFrequenciesGrantedLastAlsoWhenItIsKilled) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    Type(Find<QLineEdit>("Overview", "Frequency"), "121.5");
    ASSERT_TRUE(
        WaitFor([this] { return Label("Overview", "OwnFrequency") == QLatin1String("121.500 MHz"); }));
    // As the next one finds it, while this one has not ended.
    const ConsoleWindow next{VtClientOptions()};
    QMenu* const menu = OpenMenu(next, "RecentFrequencies");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("&1  121.500 MHz"));
    menu->close();
    EXPECT_TRUE(next.findChild<NoticeBar*>()->isHidden());
}

TEST_F(ConsoleTest, LeavesOutKeptFrequenciesThatCannotBeRightAndSaysSo) {
    window->CloseNow();
    CfgCenter::Instance().SetStorePath(QString());
    server.WriteFile(QStringLiteral("console.ini"),
                     "[FavouriteFrequencies]\nHertz0=rubbish\nName0=Lost\nHertz1=118400000\nName1=Tower\n"
                     "[RecentFrequencies]\nHertz0=-5\n[View]\nPage=Log\n");
    CfgCenter::Instance().SetStorePath(server.Path(QStringLiteral("console.ini")));
    const ConsoleWindow next{VtClientOptions()};
    EXPECT_EQ(next.findChild<NoticeBar*>()->GetText(),
              QStringLiteral("2 of the kept frequencies cannot be right and are left out."));
    EXPECT_FALSE(next.findChild<NoticeBar*>()->isHidden());
    QMenu* const menu = OpenMenu(next, "FavouriteFrequencies");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("&1  Tower\t118.400 MHz"));
    menu->close();
    EXPECT_EQ(next.GetTabs()->currentWidget()->objectName(), QStringLiteral("Log")) << "the rest holds";
}

TEST_F(ConsoleTest, TunesFromTheOverview) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    Type(Find<QLineEdit>("Overview", "Frequency"), "121.5");
    EXPECT_TRUE(
        WaitFor([this] { return Label("Overview", "OwnFrequency") == QLatin1String("121.500 MHz"); }));
    EXPECT_TRUE(Label("Overview", "AnswerText").startsWith(QLatin1String("done: tuned to 121.5 MHz")));
    EXPECT_EQ(Find<QLineEdit>("MyMpxORV", "Frequency")->text(), QStringLiteral("121.500 MHz"));
}

}  // namespace
