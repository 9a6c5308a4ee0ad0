// SPDX-License-Identifier: Apache-2.0
// GuiCentral, GuiBase and Notifications.
#include <platform/widgets/guibase.h>
#include <platform/widgets/guicentral.h>
#include <platform/widgets/notifications.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/waituntil.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace {

using values::Value;
using widgettest::Add;
using widgettest::Text;

class GuiServices : public widgettest::WidgetTest {
  protected:
    Value<bool>* FindFlag(const QString& path) { return dynamic_cast<Value<bool>*>(m_tree->FindItem(path)); }
};

TEST_F(GuiServices, AUniqueFlagIsABooleanBelowGui) {
    const QString first = GuiCentral::Instance().CreateUniqueValueBoolean(false);
    const QString second = GuiCentral::Instance().CreateUniqueValueBoolean(true);
    EXPECT_TRUE(first.startsWith(Text("/Gui/")));
    EXPECT_NE(first, second);
    ASSERT_NE(FindFlag(first), nullptr);
    ASSERT_NE(FindFlag(second), nullptr);
    EXPECT_FALSE(FindFlag(first)->GetValue());
    EXPECT_TRUE(FindFlag(second)->GetValue());
    EXPECT_EQ(FindFlag(first)->GetPathName(), first);
}

TEST_F(GuiServices, AUniqueFlagTakesNobodysPlace) {
    const QString probe = GuiCentral::Instance().CreateUniqueValueBoolean(false);
    QString digits = probe;
    digits.remove(Text("/Gui/Flag"));
    const QString next = Text("/Gui/Flag%1").arg(digits.toInt() + 1);
    auto* const stranger = Add<Value<int>>(next.toUtf8().constData(), 5);
    const QString path = GuiCentral::Instance().CreateUniqueValueBoolean(false);
    EXPECT_NE(path, next);
    EXPECT_NE(FindFlag(path), nullptr);
    EXPECT_EQ(m_tree->FindItem(next), stranger);
}

TEST_F(GuiServices, ThereIsNoFlagWithoutATreeOrWhereAValueStandsInTheWay) {
    Add<Value<int>>("/Gui", 1);
    EXPECT_EQ(GuiCentral::Instance().CreateUniqueValueBoolean(false), QString());
    DestroyTree();
    EXPECT_EQ(GuiCentral::Instance().CreateUniqueValueBoolean(false), QString());
}

TEST_F(GuiServices, FileDialogsAreTheDesktopsUnlessToldOtherwise) {
    EXPECT_EQ(GuiBase::Instance().UseNativeDialogs(), QFileDialog::Options());
    GuiBase::Instance().SetUseNativeDialogs(false);
    EXPECT_EQ(GuiBase::Instance().UseNativeDialogs(), QFileDialog::Options(QFileDialog::DontUseNativeDialog));
    GuiBase::Instance().SetUseNativeDialogs(true);
}

TEST_F(GuiServices, AWarningLeavesTheOtherWindowsUsable) {
    QLineEdit edit(&m_window);
    widgettest::Activate(m_window, edit);
    const QPointer<StandardNotification> warning =
        Notifications::warning(Text("Title"), Text("<b>Line</b> & <img src=x>"));
    ASSERT_FALSE(warning.isNull());
    EXPECT_TRUE(warning->isVisible());
    EXPECT_FALSE(warning->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(warning->windowTitle(), Text("Title"));
    EXPECT_EQ(warning->text(), Text("<b>Line</b> & <img src=x>"));
    EXPECT_EQ(warning->icon(), QMessageBox::Warning);
    EXPECT_EQ(warning->findChild<QLabel*>(Text("qt_msgbox_label"))->textFormat(), Qt::PlainText);
    QTest::keyClicks(&edit, Text("x"));
    EXPECT_EQ(edit.text(), Text("x"));
    QTest::mouseClick(warning->button(QMessageBox::Ok), Qt::LeftButton);
    EXPECT_TRUE(WaitUntil([&] { return warning.isNull(); }));
}

TEST_F(GuiServices, AWarningClosesByItselfWhenItsTimeIsUpWhateverItsButtons) {
    const QPointer<StandardNotification> warning = Notifications::warning(
        Text("Title"), Text("Text"), 20, QMessageBox::StandardButtons(QMessageBox::Ok | QMessageBox::Apply));
    EXPECT_TRUE(warning->isVisible());
    EXPECT_TRUE(WaitUntil([&] { return warning.isNull(); }));
}

TEST_F(GuiServices, AWarningIsClosedByEscape) {
    const QPointer<StandardNotification> warning = Notifications::warning(Text("Title"), Text("Text"));
    QTest::keyClick(warning.data(), Qt::Key_Escape);
    EXPECT_TRUE(WaitUntil([&] { return warning.isNull(); }));
}

TEST_F(GuiServices, AWarningDoesNotKeepTheApplicationRunning) {
    const QPointer<StandardNotification> warning = Notifications::warning(Text("Title"), Text("Text"));
    EXPECT_FALSE(warning->testAttribute(Qt::WA_QuitOnClose));
    delete warning;
}

TEST_F(GuiServices, ALongWarningIsCut) {
    const QPointer<StandardNotification> warning =
        Notifications::warning(Text("Title"), QString(1000000, QLatin1Char('w')));
    EXPECT_LT(warning->text().size(), 5000);
    EXPECT_TRUE(warning->text().endsWith(QChar(0x2026)));
    delete warning;
}

}  // namespace
