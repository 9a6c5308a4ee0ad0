// SPDX-License-Identifier: Apache-2.0
// What is asked before others lose something, and how they are told who took it.
#include <apps/pages/displaypages.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <functional>

namespace {

class QuestionsTest : public ConsoleTest {
  protected:
    void BeReady() {
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    }
    static QString Mine(const char* below) { return Of("TestConsole", below); }
    static QString Of(const char* name, const char* below) {
        return QStringLiteral("/MultiChannelServer/DynamicMpxORVs/%1/%2")
            .arg(QLatin1String(name), QLatin1String(below));
    }
    QString Get(const QString& path) const { return Tree({QStringLiteral("get"), path}); }
    void Set(const QString& path, const char* content) const {
        Tree({QStringLiteral("set"), path, QString::fromLatin1(content)});
    }

    /// Another client has an MpxORV called Van, and is job master with it.
    void LetVanBeMaster() {
        const QString van = QStringLiteral("/MultiChannelServer/DynamicMpxORVs/Van");
        m_van.Start(QStringLiteral(MCTREE),
                    {QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(server.Port()),
                     QStringLiteral("hold"), van});
        ASSERT_TRUE(WaitFor([&] { return Get(Of("Van", "Status/IsMaster")) == QLatin1String("false"); }));
        Set(Of("Van", "Request/BecomeMaster"), "true");
        ASSERT_EQ(Get(Of("Van", "Status/IsMaster")), QStringLiteral("true"));
    }
    void ChooseVan() {
        auto* const list = Find<QTableView>("MpxORVs", "MpxORVList");
        const auto row = [&] {
            for (int i = 0; i < list->model()->rowCount(); ++i)
                if (list->model()->index(i, 0).data().toString().contains(QLatin1String("Van"))) return i;
            return -1;
        };
        ASSERT_TRUE(WaitFor([&] { return row() >= 0; }));
        list->selectRow(row());
    }
    QCheckBox* Box(const char* name) { return Find<QCheckBox>("MpxORVs", name); }

    /// Answers the next question by the button called \a button, and keeps what was asked.
    ModalDriver::Step Answer(const char* button) {
        return [this, button](QWidget& dialog) {
            asked = dynamic_cast<QMessageBox&>(dialog).text();
            for (auto* const choice : dialog.findChildren<QPushButton*>())
                if (choice->text() == QLatin1String(button)) QTest::mouseClick(choice, Qt::LeftButton);
            return true;
        };
    }
    void BecomeMaster() {
        QTest::mouseClick(Find<QPushButton>("MyMpxORV", "BecomeMaster"), Qt::LeftButton);
        ASSERT_TRUE(WaitFor([this] { return Get(Mine("Status/IsMaster")) == QLatin1String("true"); }));
        ASSERT_TRUE(WaitFor(
            [this] { return Label("MyMpxORV", "OperationType").contains(QLatin1String("Job master")); }));
    }

    QString asked;

  private:
    ChildProgram m_van;
};

TEST_F(QuestionsTest, TakingTheMastershipNamesWhoLosesWhatAndMayBeLeft) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayBeJobMaster")->isChecked(); }));
    const ModalDriver user({Answer("Cancel")});
    QTest::keyClick(Box("MayBeJobMaster"), Qt::Key_Space);
    EXPECT_EQ(asked, QStringLiteral("Van is job master and loses that."));
    EXPECT_TRUE(Box("MayBeJobMaster")->isChecked());
    EXPECT_EQ(Get(Of("Van", "Status/IsMaster")), QStringLiteral("true"));
}

TEST_F(QuestionsTest, WhatIsAskedFollowsWhatHappensAndMustBeReadAgain) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayBeJobMaster")->isChecked(); }));
    const ModalDriver user({[this](QWidget& widget) {
        auto& box = dynamic_cast<QMessageBox&>(widget);
        const QAbstractButton* const act = box.buttons().first();
        EXPECT_EQ(act->text(), QStringLiteral("Take away"));
        EXPECT_TRUE(act->isEnabled());
        Set(Of("Van", "Request/BecomeMaster"), "true");  // gives it up
        bool isOffered = true;
        EXPECT_TRUE(WaitFor([&] {
            isOffered = act->isEnabled();
            return box.text() == QLatin1String("Nobody loses anything by it any more.");
        }));
        EXPECT_FALSE(isOffered) << "nobody has read it yet";
        EXPECT_TRUE(WaitFor([act] { return act->isEnabled(); }));
        return Answer("Take away")(widget);
    }});
    QTest::keyClick(Box("MayBeJobMaster"), Qt::Key_Space);
    EXPECT_TRUE(
        WaitFor([this] { return Get(Of("Van", "Policy/MayBeJobMaster")) == QLatin1String("false"); }));
}

TEST_F(QuestionsTest, WhatAnotherHasSwitchedIsAskedForNoMore) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayBeJobMaster")->isChecked(); }));
    bool isAsked = false;
    const ModalDriver user({[&](QWidget&) {
        isAsked = true;
        Set(Of("Van", "Policy/MayBeJobMaster"), "false");
        return true;
    }});
    QTest::keyClick(Box("MayBeJobMaster"), Qt::Key_Space);  // returns when nothing is asked any more
    EXPECT_TRUE(isAsked);
    EXPECT_FALSE(Box("MayBeJobMaster")->isChecked());
    RunTurns(3);
    EXPECT_EQ(Get(Of("Van", "Policy/MayBeJobMaster")), QStringLiteral("false"));
}

TEST_F(QuestionsTest, WhatIsAskedGoesWithTheServer) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayBeJobMaster")->isChecked(); }));
    bool isAsked = false;
    const ModalDriver user({[&](QWidget&) {
        isAsked = true;
        server.Kill();
        return true;
    }});
    QTest::keyClick(Box("MayBeJobMaster"), Qt::Key_Space);  // returns when nothing is asked any more
    EXPECT_TRUE(isAsked);
    EXPECT_TRUE(Box("MayBeJobMaster")->isChecked());
    EXPECT_EQ(window->findChild<QMessageBox*>(QStringLiteral("Question")), nullptr);
}

TEST_F(QuestionsTest, TheMasterIsToldWhoTookIt) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayBeJobMaster")->isChecked(); }));
    const ModalDriver user({Answer("Take away")});
    QTest::keyClick(Box("MayBeJobMaster"), Qt::Key_Space);
    EXPECT_TRUE(WaitFor([this] {
        return Get(Of("Van", "Request/Answer"))
            .startsWith(QLatin1String("ended: needs MayBeJobMaster, taken away by TestConsole, mcstest on "));
    })) << Get(Of("Van", "Request/Answer")).toStdString();
}

TEST_F(QuestionsTest, AnotherRightOfTheMasterIsAskedForByItsName) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("MayRestartJob")->isChecked(); }));
    const ModalDriver user({Answer("Take away")});
    QTest::keyClick(Box("MayRestartJob"), Qt::Key_Space);
    EXPECT_EQ(asked, QStringLiteral("Van is job master and loses this right: May restart the job."));
    EXPECT_TRUE(WaitFor([this] { return Get(Of("Van", "Policy/MayRestartJob")) == QLatin1String("false"); }));
}

TEST_F(QuestionsTest, GivingARightIsNotAskedFor) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    const ModalDriver none;
    QTest::keyClick(Box("MayCal"), Qt::Key_Space);
    EXPECT_TRUE(WaitFor([this] { return Get(Of("Van", "Policy/MayCal")) == QLatin1String("true"); }));
}

TEST_F(QuestionsTest, SwitchingTheSuppressionOffIsAskedForAndOnIsNot) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    ASSERT_NO_FATAL_FAILURE(ChooseVan());
    ASSERT_TRUE(WaitFor([this] { return Box("Blanking")->isChecked(); }));
    {
        const ModalDriver user({Answer("Cancel")});
        QTest::keyClick(Box("Blanking"), Qt::Key_Space);
        EXPECT_TRUE(asked.startsWith(QLatin1String("Van loses its protection"))) << asked.toStdString();
        EXPECT_TRUE(Box("Blanking")->isChecked());
    }
    {
        const ModalDriver user({Answer("Switch off")});
        QTest::keyClick(Box("Blanking"), Qt::Key_Space);
    }
    EXPECT_TRUE(WaitFor([this] { return Get(Of("Van", "Blanking")) == QLatin1String("false"); }));
    EXPECT_TRUE(WaitFor([this] {
        return server.Output().contains(
            QLatin1String("Van ignores the blanking, by TestConsole, mcstest on "));
    }));
    const ModalDriver none;
    QTest::keyClick(Box("Blanking"), Qt::Key_Space);
    EXPECT_TRUE(WaitFor([this] { return Get(Of("Van", "Blanking")) == QLatin1String("true"); }));
}

TEST_F(QuestionsTest, QuittingAsMasterIsAskedForWithWhoReadsFromItsRange) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(LetVanBeMaster());
    Set(Of("Van", "Request/BecomeMaster"), "true");  // gives it up
    Set(Of("Van", "Policy/IsSlaveToMasterJob"), "true");
    Set(Mine("Request/Frequency"), "121.5MHz");
    ASSERT_NO_FATAL_FAILURE(BecomeMaster());
    Set(Of("Van", "Request/Frequency"), "121.6MHz");
    ASSERT_EQ(Get(Of("Van", "Status/IsWatchingMaster")), QStringLiteral("true"));
    {
        const ModalDriver user({Answer("Cancel")});
        window->close();
    }
    EXPECT_EQ(
        asked,
        QStringLiteral("This console is job master (121.500 MHz) and gives that up.\n"
                       "These read from the master's range and lose their frequency: Van (FFM 121.6 MHz)."));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Get(Mine("Status/IsMaster")), QStringLiteral("true"));
    {
        const ModalDriver user({Answer("Quit")});
        window->close();
    }
    EXPECT_FALSE(window->isVisible());
}

TEST_F(QuestionsTest, GivingTheMpxOrvBackAsMasterIsAskedFor) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(BecomeMaster());
    auto* const box = Find<QCheckBox>("MyMpxORV", "UseMpxORV");
    for (const auto& ask : {std::function<void()>([&] { QTest::keyClick(box, Qt::Key_Space); }),
                            std::function<void()>([&] { spoken::Toggle(*box); })}) {
        const ModalDriver user({Answer("Cancel")});
        ask();
        EXPECT_TRUE(WaitFor([&] { return box->isChecked(); }));
        EXPECT_EQ(Get(Mine("Status/IsMaster")), QStringLiteral("true"));
    }
}

TEST_F(QuestionsTest, QuittingOrDisconnectingWhileTunedIsAskedFor) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Set(Mine("Request/Frequency"), "121.5MHz");
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    const auto disconnect = [this] {
        for (QAction* const action : window->findChildren<QAction*>())
            if (action->text() == QLatin1String("&Disconnect")) action->trigger();
    };
    for (const auto& leave :
         {std::function<void()>([this] { window->close(); }), std::function<void()>(disconnect)}) {
        const ModalDriver user({Answer("Cancel")});
        asked.clear();
        leave();
        EXPECT_EQ(asked, QStringLiteral("This console is tuned to 121.5 MHz and gives that up."));
        EXPECT_EQ(Label("MyMpxORV", "TunedTo"), QStringLiteral("121.500 MHz"));
    }
    EXPECT_TRUE(window->isVisible());
    const ModalDriver user({Answer("Quit")});
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(QuestionsTest, WhoHasNothingToLoseQuitsUnasked) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    const ModalDriver none;
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(QuestionsTest, ASystemThatEndsTheConsoleIsNotAsked) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    ASSERT_NO_FATAL_FAILURE(BecomeMaster());
    const ModalDriver none;
    window->CloseNow();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(QuestionsTest, LettingTheDeviceGoCanBeUndoneAndNamesWhoLosesIt) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Set(Mine("Request/Frequency"), "121.5MHz");
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    auto* const box = Find<QCheckBox>("Commands", "shallBeConnectedState");
    const auto* const bar = window->findChild<QFrame*>(QStringLiteral("UndoBar"));
    EXPECT_FALSE(bar->isVisible());
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->findChild<QLabel*>(QStringLiteral("UndoText"))->text(),
              QStringLiteral("The server lets go of its device. These lose what they have of it: TestConsole "
                             "(FFM 121.5 MHz)."));
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Offline"); }));
    EXPECT_TRUE(
        Get(Mine("Request/Answer")).startsWith(QLatin1String("ended: the ORV is not connected, let go by ")))
        << Get(Mine("Request/Answer")).toStdString();
    QTest::mouseClick(bar->findChild<QPushButton*>(QStringLiteral("Undo")), Qt::LeftButton);
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(QuestionsTest, UndoingTheConnectionAsksWhoLosesTheDeviceByThen) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    auto* const box = Find<QCheckBox>("Commands", "shallBeConnectedState");
    const auto where = [box] { return QPoint(8, box->height() / 2); };
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, where());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Offline"); }));
    ASSERT_TRUE(WaitFor([box] { return box->isEnabled(); }));
    std::function<void()> undo;
    QObject::connect(window->findChild<CommandsPage*>(), &Page::Acted, window.get(),
                     [&undo](const QString&, const std::function<void()>& back) { undo = back; });
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, where());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    Set(Mine("Request/Frequency"), "121.5MHz");
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    ASSERT_TRUE(undo);
    const ModalDriver user({Answer("Cancel")});
    undo();
    EXPECT_EQ(asked, QStringLiteral("These lose what they have of it: TestConsole (FFM 121.5 MHz)."));
    RunTurns(3);
    EXPECT_EQ(Label("MyMpxORV", "TunedTo"), QStringLiteral("121.500 MHz"));
}

}  // namespace
