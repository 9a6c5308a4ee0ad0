// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/steadylabel.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QHBoxLayout>

namespace {

using widgettest::Text;

class LayoutCounter : public QObject {
  public:
    explicit LayoutCounter(QWidget& window) { window.installEventFilter(this); }
    int Count() const { return m_count; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) ++m_count;
        return QObject::eventFilter(watched, event);
    }

  private:
    int m_count = 0;
};

class SteadyLabelTest : public testing::Test {
  protected:
    SteadyLabelTest() {
        m_layout->addWidget(m_label);
        m_layout->addStretch(1);
        m_label->ShowText(Text("88888"));
        m_window.resize(900, 50);
        m_window.show();
        RunTurns(3);
    }
    /// How often the window was laid out anew for \a text.
    int LayoutsFor(const QString& text) {
        const LayoutCounter layouts(m_window);
        m_label->ShowText(text);
        RunTurns(3);
        return layouts.Count();
    }

    QWidget m_window;
    QHBoxLayout* m_layout = new QHBoxLayout(&m_window);
    SteadyLabel* m_label = new SteadyLabel(&m_window);
};

TEST_F(SteadyLabelTest, KeepsItsRoomForTextsThatFit) {
    const int width = m_label->width();
    EXPECT_EQ(LayoutsFor(Text("8888")), 0);
    EXPECT_EQ(LayoutsFor(Text("1")), 0);
    EXPECT_EQ(LayoutsFor(QString()), 0);
    EXPECT_EQ(LayoutsFor(Text("12345")), 0);
    EXPECT_EQ(m_label->width(), width);
    EXPECT_EQ(m_label->text(), Text("12345"));
    EXPECT_TRUE(m_label->Fits());
}

TEST_F(SteadyLabelTest, GetsMoreRoomForALongerTextAtOnce) {
    EXPECT_EQ(LayoutsFor(Text("8888888888")), 1);
    EXPECT_TRUE(m_label->Fits());
    EXPECT_GE(m_label->width(), m_label->fontMetrics().horizontalAdvance(Text("8888888888")));
}

TEST_F(SteadyLabelTest, GivesBackMuchRoom) {
    LayoutsFor(QString(40, QLatin1Char('8')));
    const int width = m_label->width();
    EXPECT_EQ(LayoutsFor(Text("8")), 1);
    EXPECT_LT(m_label->width(), width - 100);
}

TEST_F(SteadyLabelTest, IsPaintedWithEveryText) {
    const widgettest::PaintCounter paints(*m_label);
    LayoutsFor(Text("1"));
    LayoutsFor(Text("2"));
    EXPECT_EQ(paints.Count(), 2);
    LayoutsFor(Text("2"));
    EXPECT_EQ(paints.Count(), 2) << "the same text";
}

TEST_F(SteadyLabelTest, StaysVisibleOrHidden) {
    EXPECT_TRUE(m_label->isVisible());
    m_label->ShowText(Text("1"));
    EXPECT_TRUE(m_label->isVisible());
    m_label->hide();
    m_label->ShowText(Text("a text that is longer by far"));
    EXPECT_TRUE(m_label->isHidden());
    m_label->show();
    RunTurns(3);
    EXPECT_TRUE(m_label->Fits());
    EXPECT_GE(m_label->width(), m_label->sizeHint().width());
}

TEST_F(SteadyLabelTest, IsAsHighEmptyAsFull) {
    const int height = m_label->sizeHint().height();
    m_label->ShowText(QString());
    EXPECT_EQ(m_label->sizeHint().height(), height);
    SteadyLabel never;
    EXPECT_EQ(never.sizeHint().height(), height);
}

TEST_F(SteadyLabelTest, MeasuresAnewInAnotherFont) {
    QFont font = m_label->font();
    font.setPointSize(font.pointSize() * 2);
    m_label->setFont(font);
    RunTurns(3);
    EXPECT_TRUE(m_label->Fits());
    const int large = m_label->width();
    font.setPointSize(font.pointSize() / 2);
    m_label->setFont(font);
    RunTurns(3);
    EXPECT_LT(m_label->width(), large);
}

TEST_F(SteadyLabelTest, DrawsATextThatFitsAsALabelDoes) {
    QLabel plain(m_label->text(), &m_window);
    plain.setTextFormat(Qt::PlainText);
    plain.setGeometry(m_label->geometry());
    EXPECT_TRUE(m_label->grab().toImage() == plain.grab().toImage());
}

}  // namespace
