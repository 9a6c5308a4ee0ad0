// SPDX-License-Identifier: Apache-2.0
// How a widget shows and says that its content is not live, and what else it says of its value.
#include <tests/platform/widgets/everywidget.h>
#include <tests/support/waituntil.h>

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

namespace {

using widgettest::Flush;
using widgettest::IsLocked;
using widgettest::ShownTip;
using widgettest::ShownTipHtml;
using widgettest::Text;
using widgettest::TipOf;
using widgettest::VeilOf;

class EveryWidgetState : public EveryWidget {
  protected:
    EveryWidgetState() { QApplication::clipboard()->setText(Text("before")); }
    QImage Picture() { return m_widget->grab().toImage(); }
};

INSTANTIATE_TEST_SUITE_P(, EveryWidgetState, testing::ValuesIn(AllKinds()), NameOfKind);

TEST_P(EveryWidgetState, AStaleValueKeepsItsContentUnderAVeil) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    EXPECT_EQ(VeilOf(*m_widget), nullptr);
    value->SetState(values::Stale);
    EXPECT_EQ(Read(), GetKind().GetText(false));
    EXPECT_EQ(GetState(), EBindingState::Stale);
    EXPECT_NE(VeilOf(*m_widget), nullptr);
    EXPECT_EQ(m_widget->accessibleDescription(), Text("Not connected: this is the last content known"));
    EXPECT_EQ(TipOf(*m_widget),
              Text("/a/v\nNot connected: this is the last content known"
                   "%1")
                  .arg(m_widget->inherits("VCNumericFloatSpin") ? Text("\nLimits: 0 to 50") : QString()));
    value->SetState(values::Valid);
    ExpectLive();
}

// What is shown must not be taken for what holds, not even for the time between two refreshes.
TEST_P(EveryWidgetState, ShowsAtOnceThatItIsNotLiveAnyMore) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    widgettest::BeginPause();
    value->SetState(values::Stale);
    EXPECT_NE(VeilOf(*m_widget), nullptr);
    value->SetState(values::Valid);
    EXPECT_EQ(VeilOf(*m_widget), nullptr);
    Delete("/a/v");
    EXPECT_NE(VeilOf(*m_widget), nullptr);
    EXPECT_EQ(m_widget->accessibleDescription(), Text("Not connected: nothing is there"));
}

TEST_P(EveryWidgetState, LooksDifferentWhenItIsStaleInShapeAndNotOnlyInColour) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    const QImage live = Picture().convertToFormat(QImage::Format_Grayscale8);
    value->SetState(values::Stale);
    Read();
    const QImage stale = Picture().convertToFormat(QImage::Format_Grayscale8);
    // A plain area is no longer plain.
    const QRect area(m_widget->width() - 60, 8, 12, 12);
    int shades = 0;
    for (int x = area.left(); x < area.right(); ++x)
        for (int y = area.top(); y < area.bottom(); ++y)
            shades += stale.pixel(x, y) != stale.pixel(area.topLeft());
    EXPECT_GT(shades, 10);
    EXPECT_NE(live, stale);
}

TEST_P(EveryWidgetState, TheVeilFollowsTheSize) {
    Bind("/a/v");
    m_widget->resize(321, 45);
    ASSERT_NE(VeilOf(*m_widget), nullptr);
    EXPECT_EQ(VeilOf(*m_widget)->size(), QSize(321, 45));
}

TEST_P(EveryWidgetState, SaysWhereItIsBoundAndWhatIsThere) {
    EXPECT_EQ(TipOf(*m_widget), Text("Not connected"));
    Bind("/a/v");
    EXPECT_EQ(TipOf(*m_widget), Text("/a/v\nNot connected: nothing is there"));
    m_tree->ProvideNode(Text("/a/v"));
    EXPECT_EQ(TipOf(*m_widget), Text("/a/v\nNot connected: what is there cannot be shown here"));
    Delete("/a/v");
    GetKind().AddValue("/a/v");
    EXPECT_TRUE(TipOf(*m_widget).startsWith(Text("/a/v\nConnected"))) << ShownTip().toStdString();
}

TEST_P(EveryWidgetState, KeepsAToolTipThatTheDisplayGaveIt) {
    m_widget->setToolTip(Text("1 < 2 & more"));
    Bind("/a/v");
    EXPECT_EQ(TipOf(*m_widget), Text("1 < 2 & more\n/a/v\nNot connected: nothing is there"));
    m_widget->setToolTip(Text("<b>bold</b>"));
    EXPECT_EQ(TipOf(*m_widget), Text("bold\n/a/v\nNot connected: nothing is there"));
}

TEST_P(EveryWidgetState, MarkupInAPathIsShownAndNotObeyed) {
    Bind("/a/<img src=x><b>v");
    EXPECT_TRUE(TipOf(*m_widget).startsWith(Text("/a/<img src=x><b>v\n"))) << ShownTip().toStdString();
    EXPECT_FALSE(ShownTipHtml().contains(Text("<img")));
}

TEST_P(EveryWidgetState, ALongPathIsCutAndBroken) {
    const QString name(50000, QLatin1Char('n'));
    GetKind().Bind(*m_widget, Text("/a/") + name);
    const QString tip = TipOf(*m_widget);
    EXPECT_LT(tip.size(), 1000);
    EXPECT_TRUE(tip.contains(QChar(0x2026)));
    EXPECT_TRUE(ShownTipHtml().contains(QChar(0x200B))) << "where a line may end";
}

TEST_P(EveryWidgetState, AMiddleClickCopiesThePath) {
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    const QString before = Read();
    QTest::mouseClick(m_widget, Qt::MiddleButton);
    EXPECT_EQ(QApplication::clipboard()->text(), Text("/a/v"));
    EXPECT_EQ(ShownTip(), Text("Copied: /a/v"));
    EXPECT_EQ(Read(), before);
}

TEST_P(EveryWidgetState, AMiddleClickThatIsTakenBackAndOneWithoutAPathCopyNothing) {
    QTest::mouseClick(m_widget, Qt::MiddleButton);
    EXPECT_EQ(QApplication::clipboard()->text(), Text("before"));
    Bind("/a/v");
    QTest::mousePress(m_widget, Qt::MiddleButton);
    QTest::mouseRelease(m_widget, Qt::MiddleButton, Qt::NoModifier, QPoint(-20, -20));
    EXPECT_EQ(QApplication::clipboard()->text(), Text("before"));
}

class EveryEditorState : public EveryWidgetState {};

INSTANTIATE_TEST_SUITE_P(, EveryEditorState, testing::ValuesIn(EditorKinds()), NameOfKind);

TEST_P(EveryEditorState, IsNamedAfterThePathWhereNobodyElseNamesIt) {
    Bind("/a/b/DeviceName");
    EXPECT_EQ(m_widget->accessibleName(), Text("DeviceName"));
    Bind("/a/b/DeviceAddress");
    EXPECT_EQ(m_widget->accessibleName(), Text("DeviceAddress"));
    m_widget->setAccessibleName(Text("The device"));
    Bind("/a/b/DeviceName");
    EXPECT_EQ(m_widget->accessibleName(), Text("The device"));
}

TEST_P(EveryEditorState, IsNotNamedAfterThePathWhereACaptionNamesIt) {
    QLabel caption(Text("Name of the device:"), &m_window);
    caption.setBuddy(m_widget);
    Bind("/a/b/DeviceName");
    EXPECT_EQ(m_widget->accessibleName(), QString());
}

TEST_P(EveryEditorState, SaysThatItMayNotBeChanged) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    EXPECT_FALSE(TipOf(*m_widget).contains(Text("May not be changed")));
    EXPECT_FALSE(IsLocked(*m_widget));
    value->SetWritable(false);
    Flush();
    EXPECT_TRUE(IsLocked(*m_widget));
    EXPECT_TRUE(TipOf(*m_widget).endsWith(Text("\nMay not be changed from here")))
        << ShownTip().toStdString();
    EXPECT_TRUE(m_widget->isEnabled());
    value->SetState(values::Stale);
    Flush();
    EXPECT_FALSE(IsLocked(*m_widget)) << "there are no rights where there is no connection";
    value->SetState(values::Valid);
    value->SetWritable(true);
    Flush();
    EXPECT_FALSE(IsLocked(*m_widget));
    Bind("");
    EXPECT_FALSE(IsLocked(*m_widget));
}

}  // namespace
