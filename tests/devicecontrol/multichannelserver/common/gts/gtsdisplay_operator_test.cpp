// SPDX-License-Identifier: Apache-2.0
// What an operator does with the display, by mouse and keyboard.
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/datamoduleeditor.h>
#include <devicecontrol/multichannelserver/common/gts/inputassignmenteditor.h>

#include <tests/devicecontrol/multichannelserver/common/gts/gtsdisplaytest.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/recordingobserver.h>

#include <QtCore/QTimer>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

namespace {

class AnOperator : public GTSDisplayTest {
  protected:
    void ShowModules(int count) {
        PutCount(count);
        for (int i = 0; i < count; ++i)
            PutModule(i, i, "ADAM-6051", "10.0.0.1", 10);
        Show();
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(WaitForStatus(i, "Connected"));
    }
    template <class Dialog>
    static void Press(Dialog& dialog, const char* name) {
        Click(*dialog.template findChild<QPushButton*>(Text(name)));
    }
    /// As a program does, by name.
    void CallSlotConnectDataModule() {
        for (QObject* const child : m_display->children())
            if (QByteArray(child->metaObject()->className()) == "GTSDisplayImpl") {
                ASSERT_TRUE(QMetaObject::invokeMethod(child, "SlotConnectDataModule"));
            }
    }
    void Add(const char* button) {
        WithModalDialog<DataModuleEditor>([this] { Click(AddModule()); },
                                          [button](DataModuleEditor& editor) { Press(editor, button); });
    }
};

TEST_F(AnOperator, AddsNothingWhenTheApplicationEndsWhileTheEditorIsOpen) {
    ShowModules(1);
    bool wasOpen = false;
    QTimer::singleShot(0, qApp, [&] {
        QTimer::singleShot(0, qApp, [&] {
            wasOpen = qobject_cast<DataModuleEditor*>(QApplication::activeModalWidget()) != nullptr;
            QCoreApplication::quit();
        });
        Click(AddModule());
    });
    QCoreApplication::exec();
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(Rows().topLevelItemCount(), 1);
}

TEST_F(AnOperator, HasNoMenuBesideTheRows) {
    ShowModules(1);
    RightClick(QPoint(10, Rows().viewport()->height() - 2));
    EXPECT_EQ(OpenMenu(), nullptr);
}

TEST_F(AnOperator, HasAMenuOnARow) {
    ShowModules(1);
    RightClickOnRow(0);
    EXPECT_EQ(MenuTexts(), MakeRow("Disconnect", "Edit", "Delete"));
    OpenMenu()->close();
    m_modules.Fail(Text("10.0.0.1"), 110);
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    RightClickOnRow(0);
    EXPECT_EQ(MenuTexts(), MakeRow("Connect", "Edit", "Delete"));
    OpenMenu()->close();
}

TEST_F(AnOperator, HasTheMenuWhereItWasAskedFor) {
    ShowModules(2);
    const QPoint center = Rows().visualItemRect(Rows().topLevelItem(1)).center();
    RightClick(center);
    ASSERT_NE(OpenMenu(), nullptr);
    EXPECT_EQ(OpenMenu()->pos(), Rows().viewport()->mapToGlobal(center));
    OpenMenu()->close();
}

TEST_F(AnOperator, HasOneMenuAtATime) {
    ShowModules(2);
    RightClickOnRow(0);
    RightClickOnRow(1);
    EXPECT_EQ(Rows().findChildren<QMenu*>().size(), 1);
    OpenMenu()->close();
}

TEST_F(AnOperator, HasTheMenuByKeyboard) {
    ShowModules(2);
    Rows().setCurrentItem(Rows().topLevelItem(1));
    Rows().setFocus();
    const QPoint position = Rows().inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, position, Rows().mapToGlobal(position));
    QApplication::sendEvent(&Rows(), &event);
    ASSERT_NE(OpenMenu(), nullptr);
    QTest::keyClick(OpenMenu(), Qt::Key_Down);
    QTest::keyClick(OpenMenu(), Qt::Key_Return);  // "Disconnect"
    EXPECT_EQ(Row(0)[4], Text("Connected"));
    EXPECT_EQ(Row(1)[4], Text("Disconnected"));
}

TEST_F(AnOperator, DisconnectsAndConnectsAModule) {
    ShowModules(1);
    RightClickOnRow(0);
    Choose("Disconnect");
    EXPECT_EQ(Row(0)[4], Text("Disconnected"));
    EXPECT_EQ(m_modules.Interfaces(), 0);
    RightClickOnRow(0);
    Choose("Connect");
    EXPECT_TRUE(WaitForStatus(0, "Connected"));
}

TEST_F(AnOperator, ConnectsAModuleInErrorAnew) {
    ShowModules(1);
    m_modules.Fail(Text("10.0.0.1"), 110);
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    const std::size_t before = m_modules.Addresses().size();
    m_modules.Read(Text("10.0.0.1"), 0);
    RightClickOnRow(0);
    Choose("Connect");
    EXPECT_EQ(Row(0)[4], Text("Error"));  // until it is connected
    EXPECT_TRUE(WaitForStatus(0, "Connected"));
    EXPECT_EQ(m_modules.Addresses().size(), before + 1);
}

TEST_F(AnOperator, DoesNotDisconnectAModuleThatConnectedWhileTheMenuOfferedToConnectIt) {
    ShowModules(1);
    RightClickOnRow(0);
    Choose("Disconnect");
    RightClickOnRow(0);
    Choose("Connect");
    RightClickOnRow(0);  // it is under way, and "Connect" is offered once more
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    Choose("Connect");
    EXPECT_EQ(Row(0)[4], Text("Connected"));
}

TEST_F(AnOperator, DoesNothingToAModuleThatFailedWhileTheMenuOfferedToDisconnectIt) {
    ShowModules(1);
    RightClickOnRow(0);
    QAction* const offered = OpenMenu()->actions().first();
    ASSERT_EQ(offered->text(), Text("Disconnect"));
    m_modules.Fail(Text("10.0.0.1"), 110);
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    offered->trigger();  // the click that was under way when the warning came
    EXPECT_EQ(Row(0)[4], Text("Error"));
    EXPECT_EQ(m_modules.Interfaces(), 1);
    EXPECT_EQ(m_modules.Addresses().size(), 1U);
}

TEST_F(AnOperator, TogglesTheConnectionByThePresentState) {
    ShowModules(1);
    RightClickOnRow(0);
    for (int i = 0; i < 2; ++i) {
        CallSlotConnectDataModule();
        EXPECT_EQ(Row(0)[4], Text("Disconnected"));
        CallSlotConnectDataModule();
        EXPECT_TRUE(WaitForStatus(0, "Connected"));
    }
    OpenMenu()->close();
}

TEST_F(AnOperator, LosesTheDisplayWhileTheMenuIsOpen) {
    ShowModules(1);
    RightClickOnRow(0);
    m_display.reset();
    EXPECT_EQ(OpenMenu(), nullptr);
}

TEST_F(AnOperator, ConnectsAllModulesInErrorAtOnceAndNoOthers) {
    ShowModules(3);
    RightClickOnRow(1);
    Choose("Disconnect");
    m_modules.Fail(Text("10.0.0.1"), 110);
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    ASSERT_TRUE(WaitForStatus(2, "Error"));
    m_modules.Read(Text("10.0.0.1"), 0);
    m_display->ConnectLostModules();
    EXPECT_TRUE(WaitForStatus(0, "Connected"));
    EXPECT_TRUE(WaitForStatus(2, "Connected"));
    EXPECT_EQ(Row(1)[4], Text("Disconnected"));
}

TEST_F(AnOperator, DisconnectsAModuleWhoseRequestHangs) {
    ShowModules(1);
    m_modules.Hang(Text("10.0.0.1"));
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    RightClickOnRow(0);
    Choose("Disconnect");
    EXPECT_EQ(Row(0)[4], Text("Disconnected"));
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(AnOperator, DeletesAModule) {
    ShowModules(2);
    RightClickOnRow(0);
    Choose("Delete");
    EXPECT_EQ(Rows().topLevelItemCount(), 1);
    EXPECT_EQ(Row(0)[0], Text("2"));
    EXPECT_EQ(Configured(), Text("1"));
    EXPECT_TRUE(AssignInputs().isEnabled());
    EXPECT_EQ(m_tree.FindItem(Text("/ORVServer/GTS/ADAM-6051-0")), nullptr);
    RightClickOnRow(0);
    Choose("Delete");
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
    EXPECT_EQ(Configured(), Text("0"));
    EXPECT_FALSE(AssignInputs().isEnabled());
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(AnOperator, SeesTheCountOnceADeletedModuleIsGone) {
    ShowModules(1);
    m_modules.Hang(Text("10.0.0.1"));
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    RecordingObserver observer([this](Observable*, TChangeCode) {
        EXPECT_EQ(m_modules.Interfaces(), 0);
        EXPECT_EQ(m_tree.FindItem(Text("/ORVServer/GTS/ADAM-6051-0")), nullptr);
    });
    auto* const count = treeaccess::ValueAt<values::Value<int>>(Text("/ORVServer/GTS/CONFIGURED"));
    ASSERT_NE(count, nullptr);
    count->AddObserver(&observer);
    RightClickOnRow(0);
    Choose("Delete");
    EXPECT_EQ(observer.Count(changecode::ContentChanged), 1);
    count->DeleteObserver(&observer);
}

TEST_F(AnOperator, DeletesAModuleWhoseRequestHangs) {
    ShowModules(1);
    m_modules.Hang(Text("10.0.0.1"));
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    RightClickOnRow(0);
    Choose("Delete");
    EXPECT_EQ(m_modules.Interfaces(), 0);
    EXPECT_EQ(Configured(), Text("0"));
}

TEST_F(AnOperator, AddsAModule) {
    Show();
    Add("ok");
    EXPECT_EQ(Configured(), Text("1"));
    EXPECT_TRUE(AssignInputs().isEnabled());
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    EXPECT_EQ(Row(0), MakeRow("1", "ADAM-6051", "127.0.0.1", "100", "Connected"));
    EXPECT_NE(m_tree.FindNode(Text("/ORVServer/GTS/ADAM-6051-0")), nullptr);
}

TEST_F(AnOperator, HearsOfTheErrorsOfAModuleThatWasAdded) {
    m_modules.Fail(Text("127.0.0.1"), 111);
    Show();
    Add("ok");
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(AnOperator, AddsNoModuleWithoutAccepting) {
    Show();
    Add("cancel");
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
    EXPECT_EQ(Configured(), Text("0"));
    EXPECT_FALSE(AssignInputs().isEnabled());
    WithModalDialog<DataModuleEditor>([this] { Click(AddModule()); },
                                      [](DataModuleEditor& editor) {
                                          EXPECT_TRUE(editor.isModal());
                                          QTest::keyClick(&editor, Qt::Key_Escape);
                                      });
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
}

TEST_F(AnOperator, AddsModulesWithTheSmallestIndexThatIsFree) {
    PutCount(2);
    PutModule(0, 2, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 0, "ADAM-6051", "10.0.0.1", 10);
    Show();
    Add("ok");
    Add("ok");
    EXPECT_EQ(Row(2)[0], Text("2"));
    EXPECT_EQ(Row(3)[0], Text("4"));
}

TEST_F(AnOperator, EditsAModule) {
    ShowModules(2);
    WithModalDialog<DataModuleEditor>(
        [this] {
            RightClickOnRow(1);
            Choose("Edit");
        },
        [](DataModuleEditor& editor) {
            auto* const address = editor.findChild<QLineEdit*>(Text("address"));
            address->selectAll();
            QTest::keyClicks(address, Text("10.0.0.9"));
            QTest::keyClick(address, Qt::Key_Return);
        });
    EXPECT_EQ(Row(0)[2], Text("10.0.0.1"));
    EXPECT_EQ(Row(1)[2], Text("10.0.0.9"));
    EXPECT_TRUE(WaitForStatus(1, "Connected"));
}

TEST_F(AnOperator, GivesAModuleAnotherIndexIfItGetsTheTypeOfOneThatHasItsOwn) {
    PutCount(3);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 0, "ADAM-6060", "10.0.0.1", 10);
    PutModule(2, 1, "ADAM-6060", "10.0.0.1", 10);
    Show();
    auto& edited = *static_cast<DataModule*>(Rows().topLevelItem(1));
    edited.Configure(Text("ADAM-6051"), Text("10.0.0.1"), PollInterval(10));
    EXPECT_EQ(Row(1)[0], Text("3"));
    EXPECT_EQ(Row(1)[1], Text("ADAM-6051"));
    EXPECT_NE(m_tree.FindNode(Text("/ORVServer/GTS/ADAM-6051-0")), nullptr);
    EXPECT_NE(m_tree.FindNode(Text("/ORVServer/GTS/ADAM-6051-2")), nullptr);
    EXPECT_EQ(m_tree.FindNode(Text("/ORVServer/GTS/ADAM-6060-0")), nullptr);
    edited.Configure(Text("ADAM-6051"), Text("10.0.0.2"), PollInterval(10));
    EXPECT_EQ(Row(1)[0], Text("3"));
}

TEST_F(AnOperator, EditsAModuleWhoseRequestHangs) {
    ShowModules(1);
    m_modules.Hang(Text("10.0.0.1"));
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    WithModalDialog<DataModuleEditor>(
        [this] {
            RightClickOnRow(0);
            Choose("Edit");
        },
        [](DataModuleEditor& editor) { Press(editor, "ok"); });
    EXPECT_EQ(Row(0)[4], Text("Disconnected"));
    m_modules.Read(Text("10.0.0.1"), 0);
    EXPECT_TRUE(WaitForStatus(0, "Connected"));
}

TEST_F(AnOperator, AssignsInputs) {
    ShowModules(2);
    WithModalDialog<InputAssignmentEditor>([this] { Click(AssignInputs()); },
                                           [](InputAssignmentEditor& editor) {
                                               auto& table = *editor.findChild<QTableWidget*>();
                                               EXPECT_EQ(table.rowCount(), 2);
                                               table.item(1, 3)->setText(Text("118.1"));
                                               Press(editor, "ok");
                                           });
    EXPECT_EQ(static_cast<DataModule*>(Rows().topLevelItem(1))->GetFrequency(3), 118100000.0);
    EXPECT_EQ(static_cast<DataModule*>(Rows().topLevelItem(0))->GetFrequency(3), 0.0);
}

TEST_F(AnOperator, LosesTheDisplayWhileADialogIsOpen) {
    const auto lose = [this](QWidget& opener) {
        QTimer::singleShot(0, qApp, [this] {
            EXPECT_NE(QApplication::activeModalWidget(), nullptr);
            m_display.reset();
        });
        Click(opener);
        EXPECT_EQ(m_display, nullptr);
        EXPECT_EQ(m_modules.Interfaces(), 0);
    };
    Show();
    lose(AddModule());
    EXPECT_EQ(Gts()->ReadInt(Text("ModuleCount"), -1), 0);
    ShowModules(1);
    lose(AssignInputs());
    EXPECT_EQ(Gts()->ReadInt(Text("ModuleCount"), -1), 1);
}

}  // namespace
