// SPDX-License-Identifier: Apache-2.0
// Floating-point numbers in VCNumericFloatSpin: units, digits, locales.
#include <platform/widgets/vcnumericfloatspin.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/waituntil.h>

#include <QtTest/QSignalSpy>
#include <QtWidgets/QLineEdit>

#include <limits>

namespace {

using values::ValueNumeric;
using widgettest::Add;
using widgettest::Flush;
using widgettest::Text;

class RealNumber : public widgettest::WidgetTest {
  protected:
    RealNumber() : m_spin(new VCNumericFloatSpin(&m_window)), m_other(new QLineEdit(&m_window)) {
        m_spin->setGeometry(10, 10, 200, 30);
        m_other->setGeometry(10, 50, 200, 30);
        m_spin->SetNumericDouble_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_spin);
    }
    void Replace(const char* text) {
        m_spin->selectAll();
        QTest::keyClicks(m_spin, Text(text));
    }
    void Press(Qt::Key key) { QTest::keyClick(m_spin, key); }
    QString Read() const {
        Flush();
        return m_spin->text();
    }

    ValueNumeric<double>* m_value = Add<ValueNumeric<double>>("/a/v", 1.23456789, -10.0, 3e9);
    VCNumericFloatSpin* m_spin;
    QLineEdit* m_other;
};

TEST_F(RealNumber, IsShownRoundedAndNotSentRounded) {
    EXPECT_EQ(Read(), Text("1.235"));
    Press(Qt::Key_Return);
    m_other->setFocus();
    EXPECT_EQ(m_value->GetValue(), 1.23456789);
}

TEST_F(RealNumber, IsNotSentIfWhatIsTypedReadsTheSame) {
    Replace("1.235");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1.23456789);
    Replace("1.2350");
    m_other->setFocus();
    EXPECT_EQ(m_value->GetValue(), 1.23456789);
    EXPECT_EQ(Read(), Text("1.235"));
}

TEST_F(RealNumber, IsSentAsItIsTyped) {
    Replace("1.236");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1.236);
}

TEST_F(RealNumber, IsShownInAUnitAndKeptInAnother) {
    m_value->SetValue(98700001.25);
    m_spin->SetUnit(1e6, 6, Text(" MHz"));
    EXPECT_EQ(Read(), Text("98.700001 MHz"));
    Press(Qt::Key_Return);
    m_other->setFocus();
    EXPECT_EQ(m_value->GetValue(), 98700001.25) << "not edited";
    Replace("98.7");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 98700000.0);
    EXPECT_EQ(Read(), Text("98.700000 MHz"));
}

TEST_F(RealNumber, IsExactInEveryUnit) {
    m_spin->SetUnit(1e6, 6, Text(" MHz"));
    Flush();
    for (int i = 1; i < 3000; i += 7) {
        const double hertz = i * 1e6 + i;
        Replace(QByteArray::number(hertz / 1e6, 'f', 6).constData());
        Press(Qt::Key_Return);
        ASSERT_EQ(m_value->GetValue(), hertz);
    }
    m_spin->SetUnit(1, 3, QString());
    Flush();
    Replace("1.001");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1.001);
    m_spin->SetUnit(0.001, 0, Text(" mV"));
    Flush();
    Replace("1234");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1.234);
}

TEST_F(RealNumber, HasLimitsInItsUnit) {
    m_spin->SetUnit(1e6, 6, Text(" MHz"));
    Flush();
    EXPECT_EQ(m_spin->maximum(), 3000.0);
    Replace("4000");
    EXPECT_EQ(m_spin->cleanText(), Text("400"));
    Press(Qt::Key_Escape);
    m_value->SetMax(2e9);
    Flush();
    EXPECT_EQ(m_spin->maximum(), 2000.0);
}

TEST_F(RealNumber, StepsInItsUnit) {
    m_value->SetValue(98.5e6);
    m_spin->SetUnit(1e6, 6, Text(" MHz"));
    Flush();
    Press(Qt::Key_Up);
    EXPECT_EQ(m_value->GetValue(), 99.5e6);
}

TEST_F(RealNumber, ShowsNoUnitOfNothing) {
    m_spin->SetUnit(1e6, 6, Text(" MHz"));
    m_spin->SetNumericDouble_ValuePath(Text("/a/nothing"));
    m_window.hide();
    m_window.show();
    EXPECT_EQ(Read(), QString());
    const QSize blank = m_spin->sizeHint();
    Add<ValueNumeric<double>>("/a/nothing", 1e6, -10.0, 3e9);
    EXPECT_EQ(Read(), Text("1.000000 MHz"));
    EXPECT_EQ(m_spin->sizeHint(), blank);
}

TEST_F(RealNumber, ThatAFieldHasNoRoomForIsShownAllTheSame) {
    QSignalSpy changed(m_spin, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    m_value->SetMax(std::numeric_limits<double>::infinity());
    for (const double number : {1e300, std::numeric_limits<double>::infinity()}) {
        m_value->SetValue(number);
        EXPECT_EQ(Read(), number < 1e301 ? Text("1e+300") : Text("inf"));
        Press(Qt::Key_Return);
        Press(Qt::Key_Up);
        Press(Qt::Key_Down);
        m_other->setFocus();
        RunTurns(2);
        EXPECT_EQ(m_value->GetValue(), number);
        m_spin->setFocus();
    }
    EXPECT_EQ(changed.count(), 0);
    Replace("12.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 12.5);
    EXPECT_EQ(Read(), Text("12.500"));
}

TEST_F(RealNumber, WithoutLimitsIsShownAndEdited) {
    auto* const free = Add<ValueNumeric<double>>("/a/free");
    m_spin->SetNumericDouble_ValuePath(Text("/a/free"));
    EXPECT_EQ(Read(), Text("0.000"));
    Replace("-123456789012.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(free->GetValue(), -123456789012.5);
}

struct LocaleCase {
    const char* name;
    const char* locale;
    const char* shown;
};
void PrintTo(const LocaleCase& locale, std::ostream* stream) {
    *stream << locale.name;
}

class RealNumberInLocale : public RealNumber, public testing::WithParamInterface<LocaleCase> {};

INSTANTIATE_TEST_SUITE_P(, RealNumberInLocale,
                         testing::Values(LocaleCase{"C", "C", "1.235"},
                                         LocaleCase{"English", "en_US", "1.235"},
                                         LocaleCase{"German", "de_DE", "1,235"},
                                         LocaleCase{"French", "fr_FR", "1,235"},
                                         LocaleCase{"Swiss", "de_CH", "1.235"}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_P(RealNumberInLocale, ReadsCommaAndPointAsTheDecimalPoint) {
    m_spin->setLocale(QLocale(Text(GetParam().locale)));
    m_spin->SetNumericDouble_ValuePath(Text("/a/v"));
    EXPECT_EQ(Read(), Text(GetParam().shown));
    Replace("1.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1.5);
    Replace("2,5");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 2.5);
    Replace("1234567.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 1234567.5);
}

TEST_P(RealNumberInLocale, AWholeNumberEndsAtThePoint) {
    auto* const whole = Add<ValueNumeric<int>>("/a/whole", 7, 0, 5000);
    m_spin->setLocale(QLocale(Text(GetParam().locale)));
    m_spin->SetNumericInt_ValuePath(Text("/a/whole"));
    Replace("1.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(whole->GetValue(), 1) << "and not 15";
    EXPECT_EQ(Read(), Text("1"));
}

}  // namespace
