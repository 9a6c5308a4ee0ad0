// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/colours.h>

#include <gtest/gtest.h>

#include <QtGui/QPalette>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

namespace {

TEST(Colours, AreDarkAndBackAgain) {
    colours::Apply(false);
    const QPalette before = QApplication::palette();
    const QString style = QApplication::style()->objectName();
    colours::Apply(true);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 100);
    EXPECT_EQ(QApplication::style()->objectName(), QStringLiteral("fusion"));
    colours::Apply(false);
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(QApplication::style()->objectName(), style);
}

TEST(Colours, LetDarkButtonsBeReadWhateverTheDesktopsStyle) {
    colours::Apply(false);
    const QString style = QApplication::style()->objectName();
    QApplication::setStyle(QStringLiteral("windows"));
    colours::Apply(true);
    QPushButton button(QStringLiteral("Calibrate"));
    EXPECT_EQ(button.style()->objectName(), QStringLiteral("fusion"));
    const QPalette palette = button.palette();
    EXPECT_GT(palette.color(QPalette::ButtonText).lightness() - palette.color(QPalette::Button).lightness(),
              80);
    colours::Apply(false);
    EXPECT_EQ(QApplication::style()->objectName(), style);
}

}  // namespace
