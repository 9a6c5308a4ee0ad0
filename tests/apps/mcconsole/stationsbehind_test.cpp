// SPDX-License-Identifier: Apache-2.0
// What happens at a station while its user looks at another one, and what stays behind at one that is left.
#include <tests/apps/mcconsole/severalstationsfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QPointer>
#include <QtWidgets/QLineEdit>

namespace {

using testing::HasSubstr;
using testing::Not;

class StationsBehind : public SeveralStations {
  protected:
    /// The first one, tuned, and the second one in front.
    void LeaveTheTower() {
        ASSERT_NO_FATAL_FAILURE(OpenBoth());
        ASSERT_NO_FATAL_FAILURE(BeReady());
        Press(Qt::Key_PageUp);
        Tune("121.5");
        ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: 121.5 MHz"; })) << Tab(0);
    }
    QString Entry(const char* name) const {
        return window->GetStations()[0]->findChild<QLineEdit*>(QString::fromLatin1(name))->text();
    }
};

TEST_F(StationsBehind, WhatIsLostThereIsSaidUntilSomebodyLooks) {
    ASSERT_NO_FATAL_FAILURE(LeaveTheTower());
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Tab(0), "Tower: 121.5 MHz");
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: LOST"; })) << Tab(0);
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: LOST 121.5 MHz"; })) << Tab(0);
    EXPECT_THAT(window->windowTitle().toStdString(), HasSubstr(" | Tower: LOST 121.5 MHz"));
    EXPECT_THAT(Bar()->tabToolTip(0).toStdString(), HasSubstr("LOST 121.5 MHz"));
    Press(Qt::Key_PageUp);
    EXPECT_THAT(Tab(0), Not(HasSubstr("LOST")));
    Press(Qt::Key_PageDown);
    EXPECT_THAT(Tab(0), Not(HasSubstr("LOST"))) << "it was seen";
}

TEST_F(StationsBehind, SoIsAMastershipThatSomebodyTakes) {
    ASSERT_NO_FATAL_FAILURE(LeaveTheTower());
    ASSERT_NO_FATAL_FAILURE(BecomeMaster(0));
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Tab(0), "Tower: 121.5 MHz");
    Tree({QStringLiteral("set"),
          QStringLiteral("/MultiChannelServer/DynamicMpxORVs/TestConsole/Policy/MayBeJobMaster"),
          QStringLiteral("false")});
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: LOST mastership"; })) << Tab(0);
}

TEST_F(StationsBehind, AStepThatIsSentFromThereIsNoLoss) {
    ASSERT_NO_FATAL_FAILURE(LeaveTheTower());
    Press(Qt::Key_L);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    Press(Qt::Key_PageDown);
    EXPECT_TRUE(WaitFor([this] { return Tab(0) == "Tower: 121.525 MHz"; })) << Tab(0);
}

TEST_F(StationsBehind, AnotherServerBeginsAnewInTheSameTab) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(mast.Start());
    ASSERT_TRUE(WaitFor([this] {
        return window->GetStations()[0]->findChild<QLabel*>(QStringLiteral("bootStateDisp"))->text() ==
               QLatin1String("Ready");
    }));
    const QPointer<StationView> left(window->GetStations()[0]);
    Tune("121.5");
    ASSERT_TRUE(
        WaitFor([this] { return !TunedAt(server).isEmpty() && TunedAt(server) != QLatin1String("0"); }));
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("131.2"));
    ASSERT_EQ(Entry("Frequency"), QStringLiteral("131.2"));
    window->ConnectTo(AddressOf(mast), VtClientOptions());
    ASSERT_EQ(window->GetStations().size(), 1U);
    ASSERT_TRUE(WaitFor([&] {
        return left == nullptr && !window->GetStations()[0]->GetSession().GetMpxOrvPath().isEmpty();
    }));
    EXPECT_EQ(Entry("Frequency"), QString()) << "it was typed for another server";
    const auto* const answer = window->findChild<QLabel*>(QStringLiteral("AnswerText"));
    EXPECT_FALSE(answer->text().contains(QLatin1String("121.5"))) << "the other server said that";
    EXPECT_FALSE(Bar()->isVisible());
    EXPECT_TRUE(WaitFor([this] { return TunedAt(server).isEmpty(); })) << "its MpxORV went";
}

TEST_F(StationsBehind, TheSameServerKeepsWhatIsTyped) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("131.2"));
    const StationView* const before = window->GetStations()[0];
    window->ConnectTo(AddressOf(server), VtClientOptions());
    EXPECT_EQ(window->GetStations()[0], before);
    EXPECT_EQ(Entry("Frequency"), QStringLiteral("131.2"));
}

TEST_F(StationsBehind, OfOneNameAreToldApartBesideTheFieldAndInTheTitle) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(mast.Start());
    window->Open(AddressOf(mast), VtClientOptions());
    const QString port = QString::number(mast.Port());
    auto* const caption = In<QLabel>(1, "Overview", "FrequencyCaption");
    EXPECT_TRUE(WaitFor([&] { return caption->text().contains(port); })) << caption->text().toStdString();
    EXPECT_LE(caption->text().size(), 40) << "beside the field is little room";
    EXPECT_TRUE(WaitFor([&] { return window->windowTitle().contains(port); }))
        << window->windowTitle().toStdString();
}

TEST_F(StationsBehind, TheWheelLeavesTheStationInFront) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_EQ(Bar()->currentIndex(), 1);
    const QPoint place = Bar()->tabRect(0).center();
    for (const int eighths : {120, -120}) {
        QWheelEvent event(place, Bar()->mapToGlobal(place), QPoint(), QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Bar(), &event);
        EXPECT_EQ(Bar()->currentIndex(), 1);
    }
}

TEST_F(StationsBehind, WhatIsNotSentIsNamedBeforeATabIsClosed) {
    ASSERT_NO_FATAL_FAILURE(OpenBoth());
    ASSERT_NO_FATAL_FAILURE(BeReady());
    Press(Qt::Key_L);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("131.2"));
    const ModalDriver user({Answer("Cancel")});
    Press(Qt::Key_W);
    EXPECT_EQ(asked, "At Mast:\n131.200 MHz is entered and not sent.");
}

}  // namespace
