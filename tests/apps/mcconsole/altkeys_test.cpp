// SPDX-License-Identifier: Apache-2.0
// Letters with Alt whose button is gone, or cannot be pressed.
#include <apps/pages/altkeys.h>

#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

class AltKeysTest : public testing::Test {
  protected:
    AltKeysTest() : keys(&window) {
        auto* const layout = new QVBoxLayout(&window);
        for (QWidget* const widget :
             {static_cast<QWidget*>(field), static_cast<QWidget*>(number), static_cast<QWidget*>(button)})
            layout->addWidget(widget);
        QObject::connect(button, &QPushButton::clicked, &window, [this] { ++presses; });
        window.show();
        QApplication::setActiveWindow(&window);
        field->setFocus();
    }
    void Press(int key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }

    QWidget window;
    QLineEdit* field = new QLineEdit(&window);
    QDoubleSpinBox* number = new QDoubleSpinBox(&window);
    QPushButton* button = new QPushButton(QStringLiteral("Ac&knowledge"), &window);
    AltKeys keys;
    int presses = 0;
};

TEST_F(AltKeysTest, DoNothingWhereTheirButtonIsGoneOrCannotBePressed) {
    QTest::keyClicks(field, QStringLiteral("1200"));
    Press(Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(WaitUntil([this] { return presses == 1; }));
    button->setEnabled(false);
    Press(Qt::Key_K, Qt::AltModifier);
    button->hide();
    for (const int key : {Qt::Key_K, Qt::Key_M, Qt::Key_9, Qt::Key_Comma})
        Press(key, Qt::AltModifier);
    Press(Qt::Key_G, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(field->text(), QStringLiteral("1200"));
}

TEST_F(AltKeysTest, DoNothingInWhateverTakesTheFocusLater) {
    number->setFocus();
    number->selectAll();
    Press(Qt::Key_5, Qt::AltModifier);
    EXPECT_EQ(number->text(), QStringLiteral("0.00"));
}

TEST_F(AltKeysTest, LeaveWhatAltGrWritesAndWhatHasNoAlt) {
    Press(Qt::Key_M, Qt::NoModifier);
    QKeyEvent third(QEvent::KeyPress, Qt::Key_M, Qt::ControlModifier | Qt::AltModifier,
                    QStringLiteral("\u00b5"));
    QApplication::sendEvent(field, &third);
    EXPECT_EQ(field->text(), QStringLiteral("m\u00b5"));
}

}  // namespace
