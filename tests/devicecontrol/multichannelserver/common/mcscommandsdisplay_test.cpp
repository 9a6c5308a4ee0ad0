// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>

#include <platform/widgets/vccheckbox.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>
#include <tests/support/waituntil.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

using displaytest::Child;
using treeaccess::Text;

const QString path = Text("/MultiChannelServer/Command");
const QString otherPath = Text("/Other/Command");
const QString valuePath = path + Text("/ShallBeConnected");

class CommandsDisplay : public testing::Test {
  protected:
    CommandsDisplay()
        : m_display(std::make_unique<MCSCommandsDisplay>()),
          m_box(Child<VCCheckBox>(*m_display, "shallBeConnectedState")) {}

    void Bind() { ASSERT_TRUE(m_display->SetCommands_ValuePath(path)); }
    void Activate(QWidget& window) {
        window.show();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(WaitUntil([&window] { return window.isActiveWindow(); }));
    }
    void Click() {
        QTest::mouseClick(&m_box, Qt::LeftButton, Qt::KeyboardModifiers(), QPoint(5, m_box.height() / 2));
    }
    bool WaitForUnlock() const {
        return WaitUntil([this] { return m_box.isEnabled(); }, 5000);
    }
    /// Runs until every lock that was set before is over: of timers with the same time, the one that was
    /// started first ends first.
    static bool OutlastTheLock() {
        bool isOver = false;
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, [&isOver] { isOver = true; });
        timer.start(MCSCommandsDisplay::LockTime);
        return WaitUntil([&isOver] { return isOver; });
    }
    static values::Value<bool>& Command() { return *treeaccess::ValueAt<values::Value<bool>>(valuePath); }

    values::Tree m_tree;
    MCSCommands m_commands{&path};
    std::unique_ptr<MCSCommandsDisplay> m_display;
    VCCheckBox& m_box;
};

TEST_F(CommandsDisplay, IsOneRow) {
    const QGridLayout& grid = displaytest::GridOf(*m_display);
    displaytest::ExpectMargins(grid, 5);
    EXPECT_EQ(grid.alignment(), Qt::AlignTop);
    EXPECT_EQ(grid.count(), 2);
    displaytest::ExpectRow(grid, 0, "Shall be connected to ORV:", m_box);
    EXPECT_EQ(m_box.sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    EXPECT_EQ(m_box.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(m_box.text(), QString());
    EXPECT_EQ(displaytest::SpokenName(m_box), Text("Shall be connected to ORV"));
}

TEST_F(CommandsDisplay, IsTranslated) {
    const displaytest::MarkingTranslator translator("MCSCommandsDisplay");
    const MCSCommandsDisplay display;
    EXPECT_EQ(displaytest::CaptionAt(displaytest::GridOf(display), 0).text(),
              Text("<Shall be connected to ORV:>"));
}

TEST_F(CommandsDisplay, IsCalledAsGivenOrByItsClass) {
    EXPECT_EQ(m_display->objectName(), Text("MCSCommandsDisplay"));
    QWidget parent;
    const MCSCommandsDisplay mine(&parent, "mine", Qt::Tool);
    EXPECT_EQ(mine.objectName(), Text("mine"));
    EXPECT_EQ(mine.parentWidget(), &parent);
    EXPECT_EQ(mine.windowType(), Qt::Tool);
}

TEST_F(CommandsDisplay, HasTwoSlotsAndNoSignals) {
    const QMetaObject* const type = m_display->metaObject();
    EXPECT_STREQ(type->className(), "MCSCommandsDisplay");
    EXPECT_EQ(type->methodCount(), QWidget::staticMetaObject.methodCount() + 2);
    for (const char* slot : {"on_m_pShallBeConnectedDisp_stateChanged(int)", "enableConnectionCheckbox()"})
        EXPECT_GE(type->indexOfSlot(slot), 0) << slot;
}

TEST_F(CommandsDisplay, ANewOneIsDisabled) {
    EXPECT_FALSE(m_box.isEnabled());
    EXPECT_FALSE(m_box.isChecked());
    EXPECT_FALSE(m_display->SetCommands_ValuePath(QString()));
}

TEST_F(CommandsDisplay, ShowsTheCommandAndIsEnabledOnceBound) {
    Bind();
    EXPECT_TRUE(m_box.isEnabled());
    EXPECT_TRUE(m_box.isChecked());
    Command().SetValue(false);
    RefreshScheduler::Instance().Flush();
    EXPECT_FALSE(m_box.isChecked());
    EXPECT_TRUE(m_box.isEnabled());  // only clicks lock
}

TEST_F(CommandsDisplay, AClickCommandsAndLocksForAMoment) {
    Bind();
    Activate(*m_display);
    QElapsedTimer sinceClick;
    sinceClick.start();
    Click();
    EXPECT_FALSE(Command().GetValue());
    EXPECT_FALSE(m_box.isEnabled());
    Click();  // in vain
    EXPECT_FALSE(Command().GetValue());
    EXPECT_TRUE(WaitForUnlock());
    EXPECT_GE(sinceClick.elapsed(), 250 - 1);
    Click();
    EXPECT_TRUE(Command().GetValue());
}

TEST_F(CommandsDisplay, StaysLockedWhileTheCommandIsStaleUntilItIsBoundAgain) {
    Bind();
    Activate(*m_display);
    Click();
    Command().SetState(values::Stale);
    ASSERT_TRUE(OutlastTheLock());
    EXPECT_FALSE(m_box.isEnabled());
    Command().SetState(values::Valid);
    ASSERT_TRUE(OutlastTheLock());  // it is not asked again
    EXPECT_FALSE(m_box.isEnabled());
    EXPECT_FALSE(m_display->SetCommands_ValuePath(Text("/Nowhere")));
    EXPECT_FALSE(m_box.isEnabled());
    Bind();
    EXPECT_TRUE(m_box.isEnabled());
}

TEST_F(CommandsDisplay, IsUnlockedWhereTheCommandWasStaleOnlyMeanwhile) {
    Bind();
    Activate(*m_display);
    Click();
    Command().SetState(values::Stale);
    Command().SetState(values::Valid);
    EXPECT_TRUE(WaitForUnlock());
}

TEST_F(CommandsDisplay, ACommandThatIsStaleCannotBeGiven) {
    Bind();
    Activate(*m_display);
    Command().SetState(values::Stale);
    Click();
    EXPECT_TRUE(Command().GetValue());
    EXPECT_TRUE(m_box.isChecked());
    EXPECT_TRUE(m_box.isEnabled());
}

TEST_F(CommandsDisplay, UnbindingDisablesTheBoxButKeepsItsBinding) {
    Bind();
    EXPECT_FALSE(m_display->SetCommands_ValuePath(QString()));
    EXPECT_FALSE(m_box.isEnabled());
    EXPECT_TRUE(m_box.isChecked());
    EXPECT_EQ(m_box.GetBinding().GetPath(), valuePath);
}

TEST_F(CommandsDisplay, IsNotUnlockedOnceUnbound) {
    Bind();
    Activate(*m_display);
    Click();
    m_display->SetCommands_ValuePath(QString());
    ASSERT_TRUE(OutlastTheLock());
    EXPECT_FALSE(m_box.isEnabled());
}

TEST_F(CommandsDisplay, BindingAnewUnlocksAtOnceButAnEarlierClickDoesNotUnlockALaterOne) {
    Bind();
    Activate(*m_display);
    Click();
    bool wasLocked = false;
    bool isFirstOver = false;
    QTimer afterFirst;
    afterFirst.setTimerType(Qt::PreciseTimer);
    QObject::connect(&afterFirst, &QTimer::timeout, [&] {
        if (!isFirstOver) wasLocked = !m_box.isEnabled();
        isFirstOver = true;
    });
    afterFirst.start(MCSCommandsDisplay::LockTime);
    Bind();
    EXPECT_TRUE(m_box.isEnabled());
    Click();
    EXPECT_TRUE(WaitUntil([&isFirstOver] { return isFirstOver; }));
    EXPECT_TRUE(wasLocked);
    EXPECT_TRUE(WaitForUnlock());
}

TEST_F(CommandsDisplay, WorksByTheKeyboardAndKeepsTheFocus) {
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    layout->addWidget(m_display.get());
    QCheckBox next(&window);
    layout->addWidget(&next);
    Bind();
    Activate(window);
    m_box.setFocus();
    QTest::keyClick(&m_box, Qt::Key_Space);
    EXPECT_FALSE(Command().GetValue());
    // What else is typed while the box is locked reaches nobody.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(next.isChecked());
    ASSERT_TRUE(WaitForUnlock());
    EXPECT_EQ(QApplication::focusWidget(), &m_box);
    QTest::keyClick(&m_box, Qt::Key_Space);
    EXPECT_TRUE(Command().GetValue());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &next);
    ASSERT_TRUE(WaitForUnlock());
    EXPECT_EQ(QApplication::focusWidget(), &next);
    m_display->setParent(nullptr);
}

TEST_F(CommandsDisplay, IsDestroyedWhileBoundAndLocked) {
    Bind();
    Activate(*m_display);
    Click();
    m_display.reset();
    EXPECT_EQ(Command().CountObservers(), 1);  // of the test's own commands
    ASSERT_TRUE(OutlastTheLock());
}

TEST_F(CommandsDisplay, IsBoundAnewToTheSameAndToAnotherPath) {
    Bind();
    Bind();
    EXPECT_EQ(Command().CountObservers(), 3);
    const MCSCommands other(&otherPath);
    other.GetShallBeConnectedValue()->SetValue(false);
    EXPECT_TRUE(m_display->SetCommands_ValuePath(otherPath));
    EXPECT_FALSE(m_box.isChecked());
    EXPECT_EQ(Command().CountObservers(), 1);
}

TEST_F(CommandsDisplay, IsBoundBeforeItsSubtreeExistsAndAgainAfterwards) {
    EXPECT_FALSE(m_display->SetCommands_ValuePath(otherPath));
    EXPECT_EQ(m_tree.FindItem(otherPath), nullptr);
    m_tree.ProvideNode(otherPath);
    EXPECT_TRUE(m_display->SetCommands_ValuePath(otherPath));
    EXPECT_TRUE(m_box.isEnabled());
    EXPECT_TRUE(m_box.isChecked());
}

TEST_F(CommandsDisplay, StaysLockedWhenTheCommandGoesMeanwhile) {
    Bind();
    Activate(*m_display);
    Click();
    treeaccess::DeleteAt(path);
    ASSERT_TRUE(OutlastTheLock());
    EXPECT_FALSE(m_box.isEnabled());
    m_tree.ProvideNode(path);
    Bind();
    EXPECT_TRUE(m_box.isEnabled());
}

TEST_F(CommandsDisplay, ACommandOfAnotherTypeCannotBeGiven) {
    Bind();
    Activate(*m_display);
    treeaccess::DeleteAt(valuePath);
    treeaccess::PutValue<values::Value<int>>(path, "ShallBeConnected");
    Click();
    EXPECT_EQ(treeaccess::ContentAt(valuePath), Text("0"));
    RefreshScheduler::Instance().Flush();
    EXPECT_FALSE(m_box.isChecked());
    EXPECT_TRUE(displaytest::IsVeiled(m_box));
}

TEST_F(CommandsDisplay, WithoutATreeIsDisabled) {
    EXPECT_FALSE(m_display->SetCommands_ValuePath(Text("/MultiChannelServer/None")));
    EXPECT_FALSE(m_box.isEnabled());
}

}  // namespace
