// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/datamoduleeditor.h>

#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include <ostream>

namespace {

class ADataModuleEditor : public DataModuleTest {
  protected:
    void Open(DataModule* module) {
        m_editor = std::make_unique<DataModuleEditor>(nullptr, module);
        m_editor->show();
    }
    template <class W>
    W& Child(const char* name) {
        W* const child = m_editor->findChild<W*>(Text(name));
        if (child == nullptr) qFatal("The editor has no %s", name);
        return *child;
    }
    QComboBox& Type() { return Child<QComboBox>("type"); }
    QLineEdit& Address() { return Child<QLineEdit>("address"); }
    QSpinBox& PollInterval() { return Child<QSpinBox>("pollInterval"); }
    void Click(const char* button) { QTest::mouseClick(&Child<QPushButton>(button), Qt::LeftButton); }
    QString Title() { return m_editor->findChild<QGroupBox*>()->title(); }
    /// Types \a text in place of what is there.
    static void Type(QWidget& field, const char* text) {
        field.setFocus();
        QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&field, Text(text));
    }

    std::unique_ptr<DataModuleEditor> m_editor;
};

TEST_F(ADataModuleEditor, IsAModalDialogWithItsName) {
    DataModule module(&m_widget, 0);
    Open(&module);
    EXPECT_EQ(m_editor->objectName(), Text("ModuleEditDialog"));
    EXPECT_TRUE(m_editor->isModal());
    EXPECT_EQ(Child<QPushButton>("ok").text(), Text("Ok"));
    EXPECT_EQ(Child<QPushButton>("cancel").text(), Text("Cancel"));
}

TEST_F(ADataModuleEditor, HasThreeRowsOf100Pixels) {
    DataModule module(&m_widget, 0);
    Open(&module);
    const std::vector<std::pair<const char*, QWidget*>> rows{
        {"Type:", &Type()}, {"IP Address:", &Address()}, {"Poll interval (ms):", &PollInterval()}};
    const QList<QLabel*> captions = m_editor->findChildren<QLabel*>();
    ASSERT_EQ(captions.size(), 3);
    int number = 0;
    for (const auto& [text, field] : rows) {
        const QLabel& caption = *captions[number++];
        EXPECT_EQ(caption.text(), Text(text));
        EXPECT_EQ(caption.buddy(), field);
        EXPECT_EQ(caption.width(), 100);
        EXPECT_EQ(field->width(), 100);
        EXPECT_EQ(field->accessibleName() + Text(":"), Text(text));
        EXPECT_EQ(caption.geometry().center().y(), field->geometry().center().y());
    }
}

TEST_F(ADataModuleEditor, ProposesValuesForANewModule) {
    DataModule module(&m_widget, 0);
    Open(&module);
    EXPECT_EQ(Title(), Text("Add new module"));
    EXPECT_EQ(Type().currentText(), Text("ADAM-6051"));
    EXPECT_EQ(Address().text(), Text("127.0.0.1"));
    EXPECT_EQ(PollInterval().value(), 100);
}

TEST_F(ADataModuleEditor, ShowsTheValuesOfAModule) {
    DataModule module(&m_widget, 0, Text("ADAM-6060"), Text("10.0.0.7"), std::chrono::milliseconds(250));
    Open(&module);
    EXPECT_EQ(Title(), Text("Edit module properties"));
    EXPECT_EQ(Type().currentText(), Text("ADAM-6060"));
    EXPECT_EQ(Address().text(), Text("10.0.0.7"));
    EXPECT_EQ(PollInterval().value(), 250);
}

TEST_F(ADataModuleEditor, OffersOnlyTheTypeThatWasPutIn) {
    DataModule module(&m_widget, 0, Text("adam-6051"), Text("10.0.0.7"), std::chrono::milliseconds(250));
    Open(&module);
    EXPECT_EQ(Type().count(), 1);
    EXPECT_EQ(Type().itemText(0), Text("adam-6051"));
    EXPECT_FALSE(Type().isEditable());
}

TEST_F(ADataModuleEditor, ConfiguresAndConnectsTheModule) {
    DataModule module(&m_widget, 0);
    Open(&module);
    Type(Address(), "10.0.0.7");
    Type(PollInterval(), "33");
    Click("ok");
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
    EXPECT_FALSE(m_editor->isVisible());
    EXPECT_EQ(module.GetType(), Text("ADAM-6051"));
    EXPECT_EQ(module.GetAddress(), Text("10.0.0.7"));
    EXPECT_EQ(module.GetPollInterval(), std::chrono::milliseconds(33));
    EXPECT_NE(m_tree.FindNode(Path("ADAM-6051-0")), nullptr);
    EXPECT_TRUE(WaitUntil([&] { return module.IsConnected(); }));
}

TEST_F(ADataModuleEditor, IsAcceptedByReturnAndRejectedByEscape) {
    DataModule module(&m_widget, 0);
    Open(&module);
    Type(Address(), "10.0.0.7");
    QTest::keyClick(&Address(), Qt::Key_Escape);
    EXPECT_EQ(m_editor->result(), QDialog::Rejected);
    EXPECT_EQ(module.GetType(), QString());
    Open(&module);
    Type(Address(), "10.0.0.7");
    QTest::keyClick(&Address(), Qt::Key_Return);
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
    EXPECT_EQ(module.GetAddress(), Text("10.0.0.7"));
}

TEST_F(ADataModuleEditor, LeavesTheModuleAloneWhenItIsCancelled) {
    const auto module = MakeConnected(0);
    Open(module.get());
    Type(Address(), "10.0.0.7");
    Click("cancel");
    EXPECT_EQ(m_editor->result(), QDialog::Rejected);
    EXPECT_EQ(module->GetAddress(), m_ip);
    EXPECT_TRUE(module->IsConnected());
}

TEST_F(ADataModuleEditor, KeepsTheAssignmentsOfAModuleWhoseTypeStaysTheSame) {
    m_modules.Read(Text("10.0.0.7"), 0);
    const auto module = MakeConnected(0);
    Open(module.get());
    Type(Address(), "10.0.0.7");
    Click("ok");
    EXPECT_EQ(module->GetFrequency(0), First);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(First); }));
}

TEST_F(ADataModuleEditor, DropsTheAssignmentsOfAModuleWhoseTypeChanges) {
    const auto module = MakeConnected(0);
    Open(module.get());
    Type().addItem(Text("ADAM-6060"));
    Type().setFocus();
    QTest::keyClick(&Type(), Qt::Key_Down);
    Click("ok");
    EXPECT_EQ(module->GetType(), Text("ADAM-6060"));
    EXPECT_EQ(module->GetFrequency(0), 0.0);
    EXPECT_FALSE(IsBlanked(First));
}

TEST_F(ADataModuleEditor, TakesAnyAddress) {
    m_modules.Refuse(Text("not an address"));
    DataModule module(&m_widget, 0);
    Open(&module);
    Type(Address(), "not an address");
    Click("ok");
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
    EXPECT_TRUE(WaitUntil([&] { return StatusOf(module) == Text("Error"); }));
}

TEST_F(ADataModuleEditor, OutlivesItsModule) {
    auto module = Make();
    Open(module.get());
    module.reset();
    Click("ok");
    EXPECT_EQ(m_editor->result(), QDialog::Accepted);
}

TEST_F(ADataModuleEditor, ConfiguresOnlyOnce) {
    DataModule module(&m_widget, 0);
    Open(&module);
    m_editor->SlotOkButton();
    Address().setText(Text("10.0.0.7"));
    m_editor->SlotOkButton();
    EXPECT_EQ(module.GetAddress(), Text("127.0.0.1"));
}

class ADoubtfulAddress : public ADataModuleEditor {
  protected:
    /// What is said below the fields; empty if there is nothing.
    QString Remark() {
        const auto* const remark = m_editor->findChild<QWidget*>(Text("remark"));
        return remark != nullptr && remark->isVisible() ? remark->accessibleName() : QString();
    }
    static QString CannotBeRight(const char* why) {
        return Text(
                   "This address cannot be right: %1. The module will be in error, and nothing of it will "
                   "blank.")
            .arg(Text(why));
    }
};

struct AddressRow {
    const char* name;
    const char* typed;
    const char* fault;
};

void PrintTo(const AddressRow& row, std::ostream* stream) {
    *stream << row.name;
}

const AddressRow addressRows[] = {
    {"Right", "10.0.0.7", ""},
    {"WithBlanksAround", " 10.0.0.7 ", ""},
    {"TooGreatANumber", "10.0.0.300", "'300' is no number from 0 to 255 without leading zeros"},
    {"ALeadingZero", "10.0.0.07", "'07' is no number from 0 to 255 without leading zeros"},
    {"ThreeNumbers", "10.0.0", "an IPv4 address has four numbers"},
    {"Broadcast", "255.255.255.255", "no module can have this address"},
    {"AName", "mast-north", "names are not resolved: give the IPv4 address of the module"},
    {"WithAPort", "10.0.0.7:502", "the port does not belong to it"},
    {"APortOnly", ":502", "the port does not belong to it"},
    {"Ipv6", "::1", "modules have no IPv6 addresses"},
    {"Nothing", " ", "it has no IP address"},
};

class AnAddress : public ADoubtfulAddress, public testing::WithParamInterface<AddressRow> {};

TEST_P(AnAddress, IsMarkedWhileItIsTypedAndTakenAllTheSame) {
    DataModule module(&m_widget, 0);
    Open(&module);
    EXPECT_EQ(Remark(), QString());
    Type(Address(), GetParam().typed);
    const bool isRight = *GetParam().fault == '\0';
    EXPECT_EQ(Remark(), isRight ? QString() : CannotBeRight(GetParam().fault));
    EXPECT_EQ(Address().toolTip(), Remark());
    Click("ok");
    EXPECT_EQ(module.GetAddress(), Text(GetParam().typed));
}

INSTANTIATE_TEST_SUITE_P(Table, AnAddress, testing::ValuesIn(addressRows), testing::PrintToStringParamName());

TEST_F(ADoubtfulAddress, MakesTheDialogAsHighAsItsWarningNeeds) {
    DataModule module(&m_widget, 0);
    Open(&module);
    const int before = m_editor->height();
    Type(Address(), "127.0.13");
    ASSERT_FALSE(Remark().isEmpty());
    EXPECT_GT(m_editor->height(), before);
    for (QWidget* const field : {static_cast<QWidget*>(&Type()), static_cast<QWidget*>(&Address()),
                                 static_cast<QWidget*>(&PollInterval())})
        EXPECT_GE(field->height(), field->minimumSizeHint().height()) << qPrintable(field->objectName());
    for (const QLabel* const text : m_editor->findChild<QWidget*>(Text("remark"))->findChildren<QLabel*>())
        EXPECT_GE(text->height(), text->heightForWidth(text->width()));
}

TEST_F(ADoubtfulAddress, IsOneThatAnotherModuleHasToo) {
    const auto other = Make(6, "ADAM-6060");
    const auto module = Make(1);
    Open(module.get());
    EXPECT_EQ(Remark(), Text("ADAM-6060-7 has this address too: both will read the same inputs."));
    Type(Address(), "10.0.0.7");
    EXPECT_EQ(Remark(), QString());
}

struct IntervalRow {
    const char* name;
    const char* typed;
    int interval;
};

void PrintTo(const IntervalRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const IntervalRow intervalRows[] = {
    {"TheShortest",      "10",   10},
    {"TheLongest",       "1000", 1000},
    {"LessThanThat",      "9",    100},   // what was there comes back
    {"Zero",              "0",    100},
    {"ANegativeOne",     "-50",  50},    // the sign cannot be typed
    {"MoreThanThat",     "1001", 100},   // nor can the last digit
    {"AWord",            "x",    100},
};
// clang-format on

class AnInterval : public ADataModuleEditor, public testing::WithParamInterface<IntervalRow> {};

TEST_P(AnInterval, BelowOrAboveTheLimitsCannotBeEntered) {
    DataModule module(&m_widget, 0);
    Open(&module);
    Type(PollInterval(), GetParam().typed);
    Click("ok");
    EXPECT_GE(module.GetPollInterval(), std::chrono::milliseconds(10));
    EXPECT_LE(module.GetPollInterval(), std::chrono::milliseconds(1000));
    EXPECT_EQ(module.GetPollInterval(), std::chrono::milliseconds(GetParam().interval));
}

INSTANTIATE_TEST_SUITE_P(Table, AnInterval, testing::ValuesIn(intervalRows),
                         testing::PrintToStringParamName());

TEST_F(ADataModuleEditor, ShowsTheNearestIntervalOfAModuleThatHasAnother) {
    DataModule fast(&m_widget, 0, Text("x"), m_ip, std::chrono::milliseconds(1));
    Open(&fast);
    EXPECT_EQ(PollInterval().value(), 10);
    DataModule slow(&m_widget, 1, Text("x"), m_ip, std::chrono::milliseconds(4294967295));
    Open(&slow);
    EXPECT_EQ(PollInterval().value(), 1000);
}

}  // namespace
