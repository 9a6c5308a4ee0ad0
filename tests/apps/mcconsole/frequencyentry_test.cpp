// SPDX-License-Identifier: Apache-2.0
// What is typed for a frequency on the page of the console's own MpxORV, and what a server in a process of
// its own is then tuned to.
#include <tests/apps/mcconsole/consolefixture.h>

#include <QtGui/QWheelEvent>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextEdit>

namespace {

class FrequencyEntryTest : public ConsoleTest {
  protected:
    void BeReady() {
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
        field = Find<QLineEdit>("MyMpxORV", "Frequency");
        ASSERT_NE(field, nullptr);
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("NOT TUNED"); }));
    }
    void TypeOnly(const char* text) {
        QTest::mouseClick(field, Qt::LeftButton);
        field->selectAll();
        QTest::keyClicks(field, QString::fromUtf8(text));
    }
    /// What the server says that this console does.
    QString Does() const {
        return Tree({QStringLiteral("get"),
                     QStringLiteral("/MultiChannelServer/DynamicMpxORVs/TestConsole/Status/OperationType")});
    }
    QString Answers() { return Find<QTextEdit>("MyMpxORV", "LogTextEdit")->toPlainText(); }
    /// Asks for something else and waits for its answer: what was sent before has been answered then.
    void WaitUntilAllIsAnswered() {
        QTest::mouseClick(Find<QPushButton>("MyMpxORV", "BuiltInTest"), Qt::LeftButton);
        ASSERT_TRUE(WaitFor(
            [this] { return Answers().contains(QLatin1String("needs \"May run built-in tests\"")); }));
    }

    QLineEdit* field = nullptr;
};

struct EntryRow {
    const char* name;
    const char* typed;
    const char* does;
};

class FrequencyTypedTest : public FrequencyEntryTest, public testing::WithParamInterface<EntryRow> {};

TEST_P(FrequencyTypedTest, IsTunedToByEnter) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    TypeOnly(GetParam().typed);
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_NO_FATAL_FAILURE(WaitUntilAllIsAnswered());
    EXPECT_EQ(Does(), QLatin1String(GetParam().does));
}

INSTANTIATE_TEST_SUITE_P(, FrequencyTypedTest,
                         testing::Values(EntryRow{"Kilohertz", "118400 kHz", "FFM 118.4 MHz"},
                                         EntryRow{"Hertz", "121500000", "FFM 121.5 MHz"},
                                         EntryRow{"Exponent", "1.2e2", "FFM 120 MHz"},
                                         EntryRow{"Comma", "121,5", "FFM 121.5 MHz"},
                                         EntryRow{"BeyondTheRange", "5000", "Idle"},
                                         EntryRow{"Letters", "abc", "Idle"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FrequencyEntryTest, LeavingTheFieldSendsNothing) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    TypeOnly("121.5");
    QTest::keyClick(field, Qt::Key_Tab);
    Page("Status");
    Page("MyMpxORV");
    ASSERT_NO_FATAL_FAILURE(WaitUntilAllIsAnswered());
    EXPECT_EQ(Does(), QStringLiteral("Idle"));
    EXPECT_EQ(field->text(), QStringLiteral("121.5"));
}

TEST_F(FrequencyEntryTest, TheTuneButtonSendsWhatWasTyped) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    TypeOnly("121.5");
    QTest::mouseClick(Find<QPushButton>("MyMpxORV", "Tune"), Qt::LeftButton);
    EXPECT_TRUE(WaitFor([this] { return Does() == QLatin1String("FFM 121.5 MHz"); }));
}

TEST_F(FrequencyEntryTest, ManyStepsAreSentOnceTheyRest) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    TypeOnly("121.5");
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([this] { return Answers().contains(QLatin1String(" done: tuned to 121.5 MHz")); }));
    const QString before = Answers();
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(field, Qt::Key_Up);
    EXPECT_EQ(Answers(), before);
    EXPECT_TRUE(WaitFor([&] { return Answers() != before; }));
    EXPECT_TRUE(Answers().trimmed().endsWith(QLatin1String(" done: tuned to 121.6 MHz")))
        << Answers().toStdString();
}

TEST_F(FrequencyEntryTest, ARefusedFrequencyStaysInTheFieldAndIsAskedForOnceMore) {
    server.WriteFile(QStringLiteral("mcserver.ini"), "[DynamicMpxORVs]\nPolicy\\MayAlterFreqSingle=false\n");
    ASSERT_NO_FATAL_FAILURE(BeReady());
    const QString policy =
        QStringLiteral("/MultiChannelServer/DynamicMpxORVs/TestConsole/Policy/MayAlterFreqSingle");
    Tree({QStringLiteral("set"), policy, QStringLiteral("false")});
    TypeOnly("121.5");
    QTest::keyClick(field, Qt::Key_Return);
    auto* const message = Find<QLabel>("MyMpxORV", "TuneMessage");
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(WaitFor([&] {
        return message->text().contains(QLatin1String("needs \"May tune a single frequency\""));
    })) << message->text().toStdString();
    EXPECT_EQ(field->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Label("MyMpxORV", "TunedTo"), QStringLiteral("NOT TUNED"));
    Tree({QStringLiteral("set"), policy, QStringLiteral("true")});
    QTest::mouseClick(Find<QPushButton>("MyMpxORV", "Tune"), Qt::LeftButton);
    EXPECT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    EXPECT_EQ(Label("MyMpxORV", "TuneMark"), QStringLiteral("Tuned"));
}

TEST_F(FrequencyEntryTest, WhatWasTunedToIsStillInTheFieldAfterALossAndMarkedAsNotSent) {
    ASSERT_NO_FATAL_FAILURE(BeReady());
    TypeOnly("121.5");
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("- - -"); }));
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("NOT TUNED"); }));
    EXPECT_EQ(field->text(), QStringLiteral("121.500 MHz"));
    EXPECT_EQ(Label("MyMpxORV", "TuneMark"), QStringLiteral("Not sent"));
}

}  // namespace
