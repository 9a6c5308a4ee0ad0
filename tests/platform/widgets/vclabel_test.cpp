// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclabel.h>

#include <platform/values/valuelist.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QHBoxLayout>

#include <functional>

namespace {

using values::Value;
using values::ValueList;
using values::ValueNumeric;
using widgettest::Add;
using widgettest::Flush;
using widgettest::Text;
using widgettest::TipOf;

class VCLabelTest : public widgettest::WidgetTest {
  protected:
    VCLabelTest() : m_label(new VCLabel(&m_window, "label", 0)) {
        m_label->setGeometry(10, 10, 200, 30);
        m_window.show();
    }
    void Bind(const char* path) { m_label->SetText_ValuePath(Text(path), true); }
    QString Read() const {
        Flush();
        return m_label->text();
    }

    VCLabel* m_label;
};

struct ContentCase {
    const char* name;
    std::function<void()> add;  ///< a value at /a/v
    const char* text;
};
void PrintTo(const ContentCase& content, std::ostream* stream) {
    *stream << content.name;
}

class VCLabelContent : public VCLabelTest, public testing::WithParamInterface<ContentCase> {};

INSTANTIATE_TEST_SUITE_P(
    , VCLabelContent,
    testing::Values(ContentCase{"Text", [] { Add<Value<QString>>("/a/v", Text("Ready")); }, "Ready"},
                    ContentCase{"AnEmptyText", [] { Add<Value<QString>>("/a/v", QString()); }, ""},
                    ContentCase{"True", [] { Add<Value<bool>>("/a/v", true); }, "Yes"},
                    ContentCase{"False", [] { Add<Value<bool>>("/a/v", false); }, "No"},
                    ContentCase{"APlainInteger", [] { Add<Value<int>>("/a/v", -12); }, "-12"},
                    ContentCase{"AnInteger", [] { Add<ValueNumeric<int>>("/a/v", 12, 0, 50); }, "12"},
                    ContentCase{"AReal", [] { Add<ValueNumeric<double>>("/a/v", 0.1, 0.0, 1.0); }, "0.1"},
                    ContentCase{"AChoice", [] { widgettest::AddSelection("/a/v", 3, 2); }, "Two"},
                    ContentCase{"NoChoice", [] { widgettest::AddSelection("/a/v", 3, -1); }, ""},
                    ContentCase{"AList",
                                [] {
                                    Add<ValueList<double>>("/a/v")->SetItems({1, 2.5, 1e9});
                                },
                                "1; 2.5; 1000000000"},
                    ContentCase{"AnEmptyList", [] { Add<ValueList<double>>("/a/v"); }, ""},
                    ContentCase{"Markup", [] { Add<Value<QString>>("/a/v", Text("<b>b</b> &amp;")); },
                                "<b>b</b> &amp;"},
                    ContentCase{"SeveralLines", [] { Add<Value<QString>>("/a/v", Text("one\ntwo\r\tx")); },
                                "one two  x"}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_P(VCLabelContent, IsReadAs) {
    GetParam().add();
    Bind("/a/v");
    EXPECT_EQ(Read(), Text(GetParam().text));
}

TEST_F(VCLabelTest, HasItsNameAndFlags) {
    EXPECT_EQ(m_label->objectName(), Text("label"));
    const VCLabel window(nullptr, nullptr, static_cast<unsigned>(Qt::Tool));
    EXPECT_EQ(window.windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    EXPECT_EQ(window.objectName(), QString());
}

TEST_F(VCLabelTest, FollowsAChoiceAndItsTexts) {
    values::ValueSelection* const choice = widgettest::AddSelection("/a/v", 3, 0);
    Bind("/a/v");
    choice->Select(20);
    EXPECT_EQ(Read(), Text("Two"));
    choice->SetItems({values::SelectionItem(Text("Second"), 2, 20)});
    EXPECT_EQ(Read(), Text("Second"));
    choice->SetItems({});
    EXPECT_EQ(Read(), QString());
}

TEST_F(VCLabelTest, ALongTextIsCutAndHoldsNoWindowOpen) {
    Add<Value<QString>>("/a/v", QString(50000, QLatin1Char('w')));
    Bind("/a/v");
    EXPECT_LT(Read().size(), 600);
    EXPECT_TRUE(Read().endsWith(QChar(0x2026)));
    EXPECT_LE(m_label->minimumSizeHint().width(), 200);
    EXPECT_LE(m_label->sizeHint().width(), 600);
}

TEST_F(VCLabelTest, ATextIsNotCutInTheMiddleOfACharacter) {
    const QString antenna = QString::fromUtf8("\xF0\x9F\x93\xA1");
    Add<Value<QString>>("/a/v", QLatin1Char('x') + antenna.repeated(1000));
    Bind("/a/v");
    const QString shown = Read();
    EXPECT_FALSE(shown.at(shown.size() - 2).isHighSurrogate());
    EXPECT_TRUE(shown.at(shown.size() - 2).isLowSurrogate());
}

TEST_F(VCLabelTest, WhatDoesNotFitIsMarkedAndToldByTheTip) {
    Add<Value<QString>>("/a/v", Text("1234567890 1234567890"));
    Bind("/a/v");
    m_label->resize(400, 30);
    EXPECT_TRUE(TipOf(*m_label).startsWith(Text("/a/v"))) << "it fits";
    const QImage whole = m_label->grab(QRect(0, 0, 50, 30)).toImage();
    m_label->resize(50, 30);
    EXPECT_TRUE(TipOf(*m_label).startsWith(Text("1234567890 1234567890\n/a/v")));
    EXPECT_NE(m_label->grab().toImage(), whole) << "a number that is cut off must not look like a number";
}

TEST_F(VCLabelTest, TellsNothingOfTheValueUnlessAskedTo) {
    Add<Value<QString>>("/a/v", Text("Ready"));
    m_label->SetText_ValuePath(Text("/a/v"), false);
    EXPECT_EQ(TipOf(*m_label), QString());
    EXPECT_EQ(Read(), Text("Ready"));
    Bind("/a/v");
    EXPECT_EQ(TipOf(*m_label), Text("/a/v\nConnected"));
}

TEST_F(VCLabelTest, ShowsDashesWhileThereIsNoValue) {
    auto* const text = Add<Value<QString>>("/a/v", Text("Ready"));
    auto* const noValue = Add<Value<bool>>("/Gui/Flag1", false);
    Bind("/a/v");
    m_label->SetNoValue_ValuePath(Text("/Gui/Flag1"));
    EXPECT_EQ(Read(), Text("Ready"));
    noValue->SetValue(true);
    EXPECT_EQ(Read(), Text("- - -"));
    text->SetValue(Text("Loading"));
    EXPECT_EQ(Read(), Text("- - -"));
    noValue->SetValue(false);
    EXPECT_EQ(Read(), Text("Loading"));
}

// Not at the rate of contents: what it said before no longer holds.
TEST_F(VCLabelTest, WhetherThereIsAValueIsShownAtOnce) {
    auto* const text = Add<Value<QString>>("/a/v", Text("Ready"));
    auto* const noValue = Add<Value<bool>>("/Gui/Flag1", false);
    Bind("/a/v");
    m_label->SetNoValue_ValuePath(Text("/Gui/Flag1"));
    widgettest::BeginPause();
    noValue->SetValue(true);
    EXPECT_EQ(m_label->text(), Text("- - -"));
    noValue->SetValue(false);
    EXPECT_EQ(m_label->text(), Text("Ready"));
    text->SetValue(Text("Loading"));
    EXPECT_EQ(m_label->text(), Text("Ready")) << "contents wait for their turn";
    Delete("/Gui/Flag1");
    EXPECT_EQ(m_label->text(), Text("Loading"));
}

TEST_F(VCLabelTest, ShowsDashesAlignedAsAskedForAndValuesAsBefore) {
    m_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Add<Value<QString>>("/a/v", Text("Ready"));
    auto* const noValue = Add<Value<bool>>("/Gui/Flag1", true);
    Bind("/a/v");
    m_label->SetNoValue_ValuePath(Text("/Gui/Flag1"));
    EXPECT_EQ(m_label->alignment(), Qt::Alignment(Qt::AlignCenter));
    m_label->SetAlignmentNoValue(Qt::AlignLeft);
    EXPECT_EQ(m_label->alignment(), Qt::Alignment(Qt::AlignLeft));
    noValue->SetValue(false);
    Flush();
    EXPECT_EQ(m_label->alignment(), Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
}

TEST_F(VCLabelTest, AFlagThatIsGoneOrNotThereOrNoBooleanCountsAsThereIsAValue) {
    Add<Value<QString>>("/a/v", Text("Ready"));
    Bind("/a/v");
    m_label->SetNoValue_ValuePath(Text("/Gui/Flag1"));
    EXPECT_EQ(Read(), Text("Ready"));
    Add<Value<bool>>("/Gui/Flag1", true);
    EXPECT_EQ(Read(), Text("- - -"));
    Delete("/Gui/Flag1");
    EXPECT_EQ(Read(), Text("Ready"));
    Add<Value<int>>("/Gui/Flag1", 1);
    EXPECT_EQ(Read(), Text("Ready"));
    Delete("/Gui/Flag1");
    Add<Value<bool>>("/Gui/Flag1", true);
    EXPECT_EQ(Read(), Text("- - -"));
    m_label->SetNoValue_ValuePath(QString());
    EXPECT_EQ(Read(), Text("Ready"));
}

TEST_F(VCLabelTest, WithoutAnItemThereIsNothingToDashOut) {
    Add<Value<bool>>("/Gui/Flag1", true);
    m_label->SetNoValue_ValuePath(Text("/Gui/Flag1"));
    EXPECT_EQ(Read(), QString());
    Bind("/a/v");
    EXPECT_EQ(Read(), QString());
}

TEST_F(VCLabelTest, GrowsInALayoutWhenItsTextDoes) {
    QWidget window;
    auto* const layout = new QHBoxLayout(&window);
    auto* const label = new VCLabel(&window);
    layout->addWidget(label);
    layout->addStretch(1);
    auto* const text = Add<Value<QString>>("/a/v", Text("x"));
    label->SetText_ValuePath(Text("/a/v"), true);
    window.resize(400, 50);
    window.show();
    RunTurns(3);
    const int before = label->width();
    text->SetValue(Text("a longer text"));
    Flush();
    RunTurns(3);
    EXPECT_GT(label->width(), before + 20);
    EXPECT_GE(label->width(), label->sizeHint().width());
}

}  // namespace
