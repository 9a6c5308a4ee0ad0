// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vcpushbutton.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QLineEdit>

namespace {

using values::Value;
using widgettest::Add;
using widgettest::Flush;
using widgettest::Text;

class VCPushButtonTest : public widgettest::WidgetTest {
  protected:
    VCPushButtonTest() : m_button(new VCPushButton(&m_window, "button")), m_field(new QLineEdit(&m_window)) {
        m_button->setGeometry(10, 10, 200, 30);
        m_field->setGeometry(10, 50, 200, 30);
        m_button->Set_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_button);
    }
    void Press() { QTest::mousePress(m_button, Qt::LeftButton); }
    void Release() { QTest::mouseRelease(m_button, Qt::LeftButton); }

    Value<bool>* m_value = Add<Value<bool>>("/a/v", false);
    VCPushButton* m_button;
    QLineEdit* m_field;
};

TEST_F(VCPushButtonTest, AClickAndAKeyAskOnce) {
    QTest::mouseClick(m_button, Qt::LeftButton);
    EXPECT_TRUE(m_value->GetValue());
    m_value->SetValue(false);
    QTest::keyClick(m_button, Qt::Key_Space);
    EXPECT_TRUE(m_value->GetValue());
}

TEST_F(VCPushButtonTest, StaysDownUntilItIsDone) {
    QTest::mouseClick(m_button, Qt::LeftButton);
    EXPECT_TRUE(m_button->isDown());
    m_value->SetValue(false);
    Flush();
    EXPECT_FALSE(m_button->isDown());
}

TEST_F(VCPushButtonTest, StaysDownThoughTheFocusLeavesIt) {
    QTest::mouseClick(m_button, Qt::LeftButton);
    m_field->setFocus();
    RunTurns(1);
    EXPECT_TRUE(m_button->isDown());
}

TEST_F(VCPushButtonTest, LosesNoClickBecauseAnotherOneWasCarriedOutMeanwhile) {
    Press();
    m_value->SetValue(true);
    m_value->SetValue(false);
    Flush();
    EXPECT_TRUE(m_button->isDown());
    Release();
    EXPECT_TRUE(m_value->GetValue());
}

TEST_F(VCPushButtonTest, AsksForNothingIfItIsLetGoOutside) {
    Press();
    QTest::mouseMove(m_button, QPoint(300, 100));
    QTest::mouseRelease(m_button, Qt::LeftButton, Qt::NoModifier, QPoint(300, 100));
    EXPECT_FALSE(m_value->GetValue());
    EXPECT_FALSE(m_button->isDown());
}

TEST_F(VCPushButtonTest, AsksNothingOfAValueThatCameWhileItWasPressed) {
    Press();
    values::Tree::Instance()->Delete(m_value);
    m_value = Add<Value<bool>>("/a/v", false);
    Flush();
    Release();
    EXPECT_FALSE(m_value->GetValue());
}

}  // namespace
