// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/mcconsole/tune/tunebar.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/refusals.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <vector>

/// The bar that tunes an MpxORV, on a tree whose server the test plays.
class TuneBarTest : public testing::Test {
  protected:
    TuneBarTest() : tuning(clock), bar(tuning, book) {
        MakeMpxOrv();
        tuning.Bind(QStringLiteral("/Mine"));
        frequency->SetValue(30e6, &server);  // somebody else wants that
        QObject::connect(&tuning, &Tuning::Granted, &book, &FrequencyBook::Remember);
        bar.show();
        QApplication::setActiveWindow(&bar);
        Field()->setFocus();
    }

    void MakeMpxOrv() {
        frequency = new values::ValueNumeric<double>(25e6, 3e5, 3e9);
        frequency->SetName(QStringLiteral("Frequency"));
        frequency->SetDelivery(values::EDelivery::EveryChange);
        answer = new values::Value<QString>;
        answer->SetName(QStringLiteral("Answer"));
        answer->SetDelivery(values::EDelivery::EveryChange);
        mode = new values::ValueSelection;
        mode->SetName(QStringLiteral("OperationMode"));
        mode->AddItem(QStringLiteral("Idle"), 0, OperationIdle);
        mode->AddItem(QStringLiteral("FFM"), 1, OperationFfm);
        mode->Select(OperationIdle);
        tree.AddValue(QStringLiteral("/Mine/Request"), frequency);
        tree.AddValue(QStringLiteral("/Mine/Request"), answer);
        tree.AddValue(QStringLiteral("/Mine/Status"), mode);
        frequency->AddObserver(&server);
    }

    // The server, which has taken the content.
    void Grant() {
        granted = frequency->GetValue();
        mode->Select(OperationFfm);
        answer->SetValue(QStringLiteral("done: tuned"));
    }
    void Refuse(const char* reason) {
        frequency->SetValue(granted, &server);
        answer->SetValue(QStringLiteral("refused: ") + QString::fromLatin1(reason));
    }
    void End(const char* reason) {
        mode->Select(OperationIdle);
        answer->SetValue(QStringLiteral("ended: ") + QString::fromLatin1(reason));
    }

    // The operator.
    QLineEdit* Field() const { return bar.findChild<QLineEdit*>(QStringLiteral("Frequency")); }
    void Type(const char* text) {
        Field()->selectAll();
        QTest::keyClicks(Field(), QString::fromUtf8(text));
    }
    /// What somebody asked for: in the field, and typed by nobody here.
    void Ask(const char* mhz) { frequency->SetValue(QByteArray(mhz).toDouble() * 1e6, &server); }
    void Press(Qt::Key key) { QTest::keyClick(Field(), key); }
    void ClickTune() {
        QTest::mouseClick(bar.findChild<QPushButton*>(QStringLiteral("Tune")), Qt::LeftButton);
    }
    void ClickStep(const char* name) {
        QTest::mouseClick(bar.findChild<QToolButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    void ChooseStep(const char* text) {
        auto* const box = bar.findChild<QComboBox*>(QStringLiteral("Step"));
        ASSERT_GE(box->findText(QString::fromLatin1(text)), 0) << text;
        const int index = box->findText(QString::fromLatin1(text));
        box->setCurrentIndex(index);
        Q_EMIT box->activated(index);
    }
    void Turn(int eighthsOfADegree) {
        const QPointF place(5, 5);
        QWheelEvent event(place, Field()->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, eighthsOfADegree),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Field(), &event);
    }

    QString Text(const char* name) const { return bar.findChild<QLabel*>(QString::fromLatin1(name))->text(); }
    QString Mark() const { return Text("TuneMark"); }
    bool HasMarkIcon() const {
        const QPixmap icon = bar.findChild<QLabel*>(QStringLiteral("TuneIcon"))->pixmap(Qt::ReturnByValue);
        return !icon.isNull();
    }
    bool HasRedFrame() const {
        const QPalette colours = bar.findChild<QFrame*>(QStringLiteral("FrequencyFrame"))->palette();
        const QColor frame = colours.color(QPalette::WindowText);
        return frame.red() > 2 * frame.green() && frame.red() > 2 * frame.blue();
    }
    /// What the server was asked for, in MHz.
    std::vector<double> Asked() const { return m_asked; }

  private:
    std::vector<double> m_asked;

  protected:
    const TraceRecorder traces;  // refusals are traced, and that is no news here
    RecordingObserver server{[this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_asked.push_back(frequency->GetValue() / 1e6);
    }};
    values::Tree tree;
    ManualClock clock;
    values::ValueNumeric<double>* frequency = nullptr;
    values::Value<QString>* answer = nullptr;
    values::ValueSelection* mode = nullptr;
    double granted = 30e6;
    Tuning tuning;
    FrequencyBook book;
    TuneBar bar;
};
