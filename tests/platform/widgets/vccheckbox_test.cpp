// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccheckbox.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtCore/QPointer>
#include <QtTest/QSignalSpy>

namespace {

using values::Value;
using widgettest::Add;
using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;

class VCCheckBoxTest : public widgettest::WidgetTest {
  protected:
    VCCheckBoxTest() : m_box(new VCCheckBox(&m_window, "box")) {
        m_box->setGeometry(10, 10, 200, 30);
        m_box->Set_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_box);
    }
    void Click() { QTest::mouseClick(m_box, Qt::LeftButton, Qt::NoModifier, QPoint(8, 15)); }

    Value<bool>* m_value = Add<Value<bool>>("/a/v", false);
    VCCheckBox* m_box;
};

TEST_F(VCCheckBoxTest, HasItsNameAndText) {
    EXPECT_EQ(m_box->objectName(), Text("box"));
    m_box->SetText(Text("Connect on startup"));
    EXPECT_EQ(m_box->text(), Text("Connect on startup"));
}

TEST_F(VCCheckBoxTest, IsCalledWhatItSays) {
    m_box->SetText(Text("Connect on startup"));
    m_box->Set_ValuePath(Text("/a/v"));
    EXPECT_EQ(m_box->accessibleName(), Text("v")) << "it had no text when it was bound";
    VCCheckBox box(&m_window);
    box.SetText(Text("Connect on startup"));
    box.Set_ValuePath(Text("/a/v"));
    EXPECT_EQ(box.accessibleName(), QString());
}

TEST_F(VCCheckBoxTest, AClickAndAKeySwitchTheValue) {
    Click();
    EXPECT_TRUE(m_value->GetValue());
    EXPECT_TRUE(m_box->isChecked());
    QTest::keyClick(m_box, Qt::Key_Space);
    EXPECT_FALSE(m_value->GetValue());
    EXPECT_FALSE(m_box->isChecked());
}

TEST_F(VCCheckBoxTest, TellsEveryClickOfTheUserAndNothingElse) {
    QSignalSpy changed(m_box, &QCheckBox::stateChanged);
    QSignalSpy toggled(m_box, &QAbstractButton::toggled);
    m_value->SetValue(true);
    Flush();
    Click();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.last().at(0).toInt(), Qt::Unchecked);
    m_value->SetValue(true);
    Flush();
    m_value->SetValue(false);
    Flush();
    Click();
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(changed.last().at(0).toInt(), Qt::Checked);
    EXPECT_EQ(toggled.count(), 2);
}

TEST_F(VCCheckBoxTest, TellsAClickAfterOneThatWasSetBackAtOnce) {
    RecordingObserver setsBack([&](Observable*, TChangeCode) { m_value->SetValue(false); });
    m_value->AddObserver(&setsBack);
    QSignalSpy changed(m_box, &QCheckBox::stateChanged);
    Click();
    EXPECT_FALSE(m_box->isChecked());
    Click();
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(changed.last().at(0).toInt(), Qt::Checked);
    m_value->DeleteObserver(&setsBack);
}

TEST_F(VCCheckBoxTest, TheValueIsSetWhenTheClickIsTold) {
    bool wasSet = false;
    QObject::connect(m_box, &QCheckBox::stateChanged, m_box, [&] { wasSet = m_value->GetValue(); });
    Click();
    EXPECT_TRUE(wasSet);
}

TEST_F(VCCheckBoxTest, WhoeverIsToldOfAClickMayDestroyOrDisableTheBox) {
    QObject::connect(m_box, &QCheckBox::stateChanged, m_box, [&] { m_box->setEnabled(false); });
    Click();
    EXPECT_TRUE(m_value->GetValue());
    EXPECT_FALSE(m_box->isEnabled());
    Click();
    EXPECT_TRUE(m_value->GetValue()) << "a locked box cannot be clicked";

    auto* const box = new VCCheckBox(&m_window);
    const QPointer<VCCheckBox> guard(box);
    box->setGeometry(10, 50, 200, 30);
    box->Set_ValuePath(Text("/a/v"));
    box->show();
    QObject::connect(box, &QCheckBox::stateChanged, &m_window, [&] { delete box; });
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, 15));
    EXPECT_TRUE(guard.isNull());
    EXPECT_FALSE(m_value->GetValue());
}

TEST_F(VCCheckBoxTest, AClickSwitchesWhatTheUserSees) {
    widgettest::Settle();
    m_value->SetValue(true);   // shown at once, and a pause begins
    m_value->SetValue(false);  // not shown yet
    ASSERT_TRUE(m_box->isChecked());
    Click();
    EXPECT_FALSE(m_value->GetValue()) << "the user wanted it not to be checked";
    Flush();
    EXPECT_FALSE(m_box->isChecked());
}

TEST_F(VCCheckBoxTest, AClickOnAnUnboundBoxIsRefused) {
    QSignalSpy changed(m_box, &QCheckBox::stateChanged);
    m_box->Set_ValuePath(QString());
    Click();
    RunTurns(2);
    EXPECT_FALSE(m_box->isChecked());
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(ShownTip(), Text("This cannot be changed now."));
}

TEST_F(VCCheckBoxTest, OnlyABooleanIsShown) {
    Add<Value<int>>("/a/i", 1);
    m_box->Set_ValuePath(Text("/a/i"));
    EXPECT_EQ(m_box->GetBinding().GetState(), EBindingState::WrongType);
    EXPECT_FALSE(m_box->isChecked());
}

}  // namespace
