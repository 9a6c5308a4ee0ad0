// SPDX-License-Identifier: Apache-2.0
// A new number draws less than the toolkit would: nothing but that may be different.
#include <platform/widgets/vcnumericfloatspin.h>

#include <tests/platform/widgets/widgettest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>

#include <functional>
#include <memory>
#include <ostream>

namespace {

using values::ValueNumeric;
using widgettest::Add;
using widgettest::Flush;
using widgettest::Text;

struct LookRow {
    const char* name;
    const char* style;
    std::function<void(QDoubleSpinBox&)> prepare;
};
void PrintTo(const LookRow& row, std::ostream* stream) {
    *stream << row.name;
}

std::function<void(QDoubleSpinBox&)> Sheet(const char* sheet) {
    return [sheet](QDoubleSpinBox& spin) { spin.window()->setStyleSheet(Text(sheet)); };
}

class VCNumericFloatSpinLook : public widgettest::WidgetTest, public testing::WithParamInterface<LookRow> {
  protected:
    VCNumericFloatSpinLook()
        : m_style(QStyleFactory::create(Text(GetParam().style))),
          m_spin(new VCNumericFloatSpin(&m_window)),
          m_plain(new QDoubleSpinBox(&m_plainWindow)) {
        m_spin->SetNumericInt_ValuePath(Text("/a/v"));
        m_plain->setDecimals(0);
        m_plain->setRange(5, 50);
        for (QDoubleSpinBox* const spin : {static_cast<QDoubleSpinBox*>(m_spin), m_plain}) {
            QWidget& window = *spin->window();
            window.resize(220, 60);
            spin->setGeometry(10, 10, 200, 30);
            spin->setFocusPolicy(Qt::NoFocus);
            for (QWidget* const part : window.findChildren<QWidget*>())
                part->setStyle(m_style.get());
            GetParam().prepare(*spin);
            window.show();
        }
        Show(7);
    }
    ~VCNumericFloatSpinLook() override {
        for (QWidget* const window : {&m_window, &m_plainWindow}) {
            window->setStyleSheet(QString());
            for (QWidget* const part : window->findChildren<QWidget*>())
                part->setStyle(nullptr);
        }
    }
    void Show(int number) {
        m_value->SetValue(number);
        m_plain->setValue(number);
        Flush();
        QCoreApplication::processEvents();
    }
    /// What is on the screen, as it came to be there.
    static QImage OnScreen(const QWidget& window) {
        return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }
    static QImage DrawnAnew(QWidget& window) {
        return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    const std::unique_ptr<QStyle> m_style;
    ValueNumeric<int>* m_value = Add<ValueNumeric<int>>("/a/v", 7, 5, 50);
    VCNumericFloatSpin* m_spin;
    QWidget m_plainWindow;
    QDoubleSpinBox* m_plain;
};

// The arrows change too: there is nothing above 50 and nothing below 5.
TEST_P(VCNumericFloatSpinLook, IsThatOfAnyOtherSpinBox) {
    for (const int number : {7, 50, 48, 5, 6}) {
        Show(number);
        EXPECT_EQ(OnScreen(m_window), OnScreen(m_plainWindow)) << number;
        EXPECT_EQ(OnScreen(m_window), DrawnAnew(m_window)) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(
    , VCNumericFloatSpinLook,
    testing::Values(
        LookRow{"InFusion", "fusion", [](QDoubleSpinBox&) {}},
        LookRow{"InWindows", "windows", [](QDoubleSpinBox&) {}},
        LookRow{"Disabled", "fusion", [](QDoubleSpinBox& spin) { spin.setEnabled(false); }},
        LookRow{"WithoutButtons", "fusion",
                [](QDoubleSpinBox& spin) { spin.setButtonSymbols(QDoubleSpinBox::NoButtons); }},
        LookRow{"WithoutAFrame", "fusion", [](QDoubleSpinBox& spin) { spin.setFrame(false); }},
        LookRow{"InAColour", "fusion",
                [](QDoubleSpinBox& spin) {
                    QPalette palette = spin.palette();
                    palette.setColor(QPalette::Base, Qt::yellow);
                    spin.setPalette(palette);
                }},
        LookRow{"InAPattern", "fusion",
                [](QDoubleSpinBox& spin) {
                    QPalette palette = spin.palette();
                    palette.setBrush(QPalette::Base, QBrush(Qt::red, Qt::Dense4Pattern));
                    spin.setPalette(palette);
                }},
        LookRow{"InASheetsColour", "fusion", Sheet("QDoubleSpinBox { background: #ffe0e0; color: navy }")},
        LookRow{"InASheetsGradient", "fusion",
                Sheet("QDoubleSpinBox { background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 white, "
                      "stop:1 green) }")},
        LookRow{"InASheetsBorder", "fusion",
                Sheet("QDoubleSpinBox { border: 3px solid red; border-radius: 9px }")},
        LookRow{"InASheetWithoutABackground", "fusion", Sheet("QDoubleSpinBox { background: transparent }")},
        LookRow{"InASheetForAll", "fusion", Sheet("* { background: #203040; color: white }")},
        LookRow{"InASheetForItsText", "fusion", Sheet("QDoubleSpinBox QLineEdit { background: yellow }")}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
