// SPDX-License-Identifier: Apache-2.0
// One window on two servers, each in a process of its own: each station has its tab, and nothing that is done
// or happens at one is done or shown at the other.
#include <apps/mcconsole/keptstations.h>
#include <apps/pages/keysdialog.h>

#include <platform/config/icfg.h>
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcconsole/ingerman.h>
#include <tests/apps/mcconsole/severalstationsfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QSysInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QToolButton>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(SeveralStations, OneStationHasNoTab) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_FALSE(Bar()->isVisible());
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("FrequencyCaption"))->text(),
              QStringLiteral("&Frequency:"));
}

TEST_F(SeveralStations, EachHasATabThatSaysHowItIs) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    EXPECT_TRUE(Bar()->isVisible());
    EXPECT_EQ(Bar()->currentIndex(), 1);
    EXPECT_EQ(Bar()->accessibleTabName(0), QStringLiteral("Tower: NOT TUNED (worth a look)"));
    EXPECT_FALSE(Bar()->tabIcon(0).isNull());
    QTest::mouseClick(Bar(), Qt::LeftButton, Qt::NoModifier, Bar()->tabRect(0).center());
    EXPECT_TRUE(Station(0).isVisible());
    EXPECT_FALSE(Station(1).isVisible());
    EXPECT_TRUE(WaitFor([this] { return window->windowTitle().contains(QLatin1String("Tower")); }));
}

TEST_F(SeveralStations, TheFrequencyIsTunedAtTheStationInFrontAlone) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Bar()->currentIndex(), 0);
    Tune("121.5");
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: 121.5 MHz"; })) << Tab(0);
    EXPECT_EQ(Tab(1), "Mast: NOT TUNED");
    EXPECT_EQ(TunedAt(mast), QStringLiteral("0"));
    Press(Qt::Key_PageDown);
    auto* const caption = In<QLabel>(1, "Overview", "FrequencyCaption");
    EXPECT_EQ(caption->text(), QStringLiteral("&Frequency at Mast:"));
    EXPECT_NE(In<QLineEdit>(1, "Overview", "Frequency")->text(), QStringLiteral("121.500 MHz"));
    Tune("118");
    EXPECT_TRUE(WaitFor([this] { return Tab(1) == "Mast: 118 MHz"; })) << Tab(1);
    EXPECT_EQ(TunedAt(server), QStringLiteral("121500000"));
}

TEST_F(SeveralStations, AServerThatIsKilledIsSeenInItsTabAndDisturbsNobodyElse) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: LOST"; })) << Tab(0);
    EXPECT_EQ(Bar()->currentIndex(), 1);
    EXPECT_THAT(Bar()->tabToolTip(0).toStdString(), HasSubstr("LOST"));
    EXPECT_TRUE(WaitFor([this] { return window->windowTitle().endsWith(QLatin1String(" | Tower: LOST")); }))
        << window->windowTitle().toStdString();
    EXPECT_FALSE(Station(1).findChild<QLabel*>(QStringLiteral("Banner"))->isVisible());
    Tune("118");
    EXPECT_TRUE(WaitFor([this] { return Tab(1) == "Mast: 118 MHz"; })) << Tab(1);
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: NOT TUNED"; })) << Tab(0);
    EXPECT_EQ(Tab(1), "Mast: 118 MHz");
}

TEST_F(SeveralStations, WhatOneRefusesIsNotSaidOfTheOther) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    mast.WriteFile(QStringLiteral("access"),
                   "allow viewer read /MultiChannelServer/Status\nuser eve viewer " +
                       VtTokenHash::Of(QStringLiteral("secret")).ToText().toUtf8() + "\n");
    ASSERT_NO_FATAL_FAILURE(mast.Start({QStringLiteral("--access"), mast.Path(QStringLiteral("access"))}));
    VtClientOptions options;
    options.user = QStringLiteral("eve");
    options.token = QStringLiteral("secret");
    window->Open(AddressOf(mast), options);
    EXPECT_TRUE(WaitFor([this] { return !Station(1).GetSession().GetMpxOrvProblem().isEmpty(); }));
    EXPECT_EQ(Station(0).GetSession().GetMpxOrvProblem(), QString());
}

TEST_F(SeveralStations, AskingForAStationThatIsOpenGoesToItsTab) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ServerAddress again = AddressOf(server);
    again.host = QStringLiteral("localhost");
    window->Open(again, VtClientOptions());
    EXPECT_EQ(window->GetStations().size(), 2U);
    EXPECT_EQ(Bar()->currentIndex(), 0);
    window->ConnectTo(AddressOf(mast), VtClientOptions());
    EXPECT_EQ(Bar()->currentIndex(), 1);
    EXPECT_EQ(Tab(0), "Tower: NOT TUNED") << "it was not left for the other";
}

TEST_F(SeveralStations, TwoOfOneNameAreToldApart) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(mast.Start());
    window->Open(AddressOf(mast), VtClientOptions());
    const auto label = [](const ServerProcess& process) {
        return QStringLiteral(" (127.0.0.1:%1): NOT TUNED").arg(process.Port()).toStdString();
    };
    EXPECT_TRUE(WaitFor([&] { return Tab(0).find(label(server)) != std::string::npos; })) << Tab(0);
    EXPECT_TRUE(WaitFor([&] { return Tab(1).find(label(mast)) != std::string::npos; })) << Tab(1);
}

TEST_F(SeveralStations, ClosingATabAsksWhereSomethingIsLostAndNamesTheStation) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Tune("118");
    ASSERT_TRUE(WaitFor([this] { return Tab(1) == "Mast: 118 MHz"; }));
    {
        const ModalDriver user({Answer("Cancel")});
        Press(Qt::Key_W);
    }
    EXPECT_EQ(asked, "At Mast:\nThis console is tuned to 118 MHz and gives that up.");
    EXPECT_EQ(window->GetStations().size(), 2U);
    {
        const ModalDriver user({Answer("Close")});
        Press(Qt::Key_W);
    }
    ASSERT_EQ(window->GetStations().size(), 1U);
    EXPECT_FALSE(Bar()->isVisible());
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("FrequencyCaption"))->text(),
              QStringLiteral("&Frequency:"));
    EXPECT_TRUE(WaitFor([this] { return TunedAt(mast).isEmpty(); })) << "its MpxORV went";
    EXPECT_EQ(TunedAt(server), QStringLiteral("0")) << "the other stayed";
    const ModalDriver none;
    Press(Qt::Key_W);
    EXPECT_EQ(window->GetStations().size(), 1U) << "the last one has no tab to close";
}

TEST_F(SeveralStations, WhoHoldsNothingIsNotAsked) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    const ModalDriver none;
    auto* const close = qobject_cast<QToolButton*>(Bar()->tabButton(0, QTabBar::RightSide));
    QTest::mouseClick(close, Qt::LeftButton);
    ASSERT_EQ(window->GetStations().size(), 1U);
    EXPECT_TRUE(WaitFor([this] { return window->windowTitle().contains(QLatin1String("Mast")); }));
}

TEST_F(SeveralStations, QuittingAsksOfTheMasterBehindAndShowsWhereItIs) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Press(Qt::Key_PageUp);
    ASSERT_NO_FATAL_FAILURE(BecomeMaster(0));
    Press(Qt::Key_PageDown);
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("134.2"));
    int seen = -1;
    {
        const ModalDriver user({[&](QWidget& dialog) {
            seen = Bar()->currentIndex();
            return Answer("Cancel")(dialog);
        }});
        window->close();
    }
    EXPECT_THAT(asked, AllOf(StartsWith("At Tower:\n"), HasSubstr("is job master")));
    EXPECT_EQ(seen, 0) << "what is asked is about what is seen";
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Bar()->currentIndex(), 1) << "who types on means the station of before";
    window->activateWindow();  // the question was before it
    QCoreApplication::processEvents();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(WaitFor([this] { return Tab(1) == "Mast: 134.2 MHz"; })) << Tab(1);
    const ModalDriver user({Answer("Quit")});
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SeveralStations, QuittingAsksOnceOfAllThatTheConsoleItselfLoses) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Tune("118");
    ASSERT_TRUE(WaitFor([this] { return Tab(1) == "Mast: 118 MHz"; }));
    Press(Qt::Key_PageUp);
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("134.2"));
    {
        const ModalDriver user({Answer("Cancel")});
        window->close();
    }
    EXPECT_EQ(asked,
              "At Tower:\n134.200 MHz is entered and not sent.\n"
              "At Mast:\nThis console is tuned to 118 MHz and gives that up.");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Bar()->currentIndex(), 0);
    const ModalDriver user({Answer("Quit")});
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SeveralStations, QuittingAsksNothingWhereAFrequencyIsOnlyEntered) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("134.2"));
    const ModalDriver none;
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SeveralStations, WhatCanBeUndoneIsOfferedAtItsStationAlone) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    auto* const box = In<QCheckBox>(1, "Commands", "shallBeConnectedState");
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    const auto* const text = Station(1).findChild<QLabel*>(QStringLiteral("UndoText"));
    EXPECT_THAT(text->text().toStdString(), StartsWith("Mast: The server lets go of its device."));
    EXPECT_TRUE(text->isVisible());
    Press(Qt::Key_PageUp);
    EXPECT_FALSE(text->isVisible());
    EXPECT_FALSE(Station(0).findChild<QLabel*>(QStringLiteral("UndoText"))->isVisible());
}

TEST_F(SeveralStations, AreThereAgainAtTheNextStart) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    Press(Qt::Key_PageUp);
    window->close();
    window = std::make_unique<ConsoleWindow>(VtClientOptions());
    window->SetMpxOrvName(QStringLiteral("TestConsole"));
    window->show();
    ASSERT_TRUE(window->OpenKept());
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: NOT TUNED" && Tab(1) == "Mast: NOT TUNED"; }));
    EXPECT_EQ(Bar()->currentIndex(), 0);
}

TEST_F(SeveralStations, AreThereAgainAlsoAfterAnEndWithoutOrder) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    KeptStations kept;
    kept.Read(*std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot()));
    EXPECT_EQ(kept.entries.size(), 2U) << "kept with each change, since a console may be killed";
}

TEST_F(SeveralStations, AStationThatWasClosedOrWasAloneIsNotOpenedAgain) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    Press(Qt::Key_W);
    window->close();
    window = std::make_unique<ConsoleWindow>(VtClientOptions());
    EXPECT_FALSE(window->OpenKept());
}

TEST_F(SeveralStations, AllKeysAreListed) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    std::string keys;
    for (const KeysDialog::Row& row : window->GetKeys())
        keys += (row.keys + QStringLiteral(" ") + row.what + QStringLiteral("\n")).toStdString();
    for (const char* const key : {"Ctrl+T Open a further station", "Ctrl+W Close this station",
                                  "Ctrl+PgDown Next station", "Ctrl+PgUp Previous station"})
        EXPECT_THAT(keys, HasSubstr(key));
}

TEST_F(SeveralStations, WhatCanBeNoServerLeavesNoTab) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    window->Open({QStringLiteral("hub"), 4222, false, true}, VtClientOptions());
    int told = 0;
    for (QWidget* const shown : QApplication::topLevelWidgets()) {
        auto* const box = qobject_cast<QMessageBox*>(shown);
        if (box == nullptr) continue;
        told += box->text() == QLatin1String("\"hub\" cannot be a server.") ? 1 : 0;
        delete box;
    }
    EXPECT_EQ(told, 1);
    EXPECT_EQ(window->GetStations().size(), 1U);
}

class SeveralInGerman : protected InGerman, public SeveralStations {};

TEST_F(SeveralInGerman, AllOfItIsGerman) {
    ASSERT_GT(english.Count(), 400);
    for (const QString& name :
         {QSysInfo::machineHostName(), QStringLiteral("mcconsole_tests"), QStringLiteral("TestConsole"),
          QStringLiteral("Tower"), QStringLiteral("Mast")})
        english.Allow(name);
    server.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Tower\n");
    mast.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Mast\n");
    window->SetMpxOrvName(QStringLiteral("TestConsole"));
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(mast.Start());
    window->Open(AddressOf(mast), VtClientOptions());
    ASSERT_TRUE(WaitFor([this] { return Tab(1) == "Mast: NICHT EINGESTELLT"; })) << Tab(1);
    visibletexts::ForEach(*window, ReadAt("two stations"));
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: VERLOREN"; })) << Tab(0);
    visibletexts::ForEach(*window, ReadAt("one is lost"));
    EXPECT_EQ(faults, "");
}

}  // namespace
