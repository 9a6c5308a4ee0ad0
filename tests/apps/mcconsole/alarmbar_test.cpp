// SPDX-License-Identifier: Apache-2.0
// The bar that names the frequencies nobody watches.
#include <apps/mcconsole/alarmbar.h>

#include <platform/widgets/refreshscheduler.h>

#include <tests/apps/mcconsole/situationfixture.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

using testing::HasSubstr;
using testing::Not;

namespace {

class AlarmBarTest : public SituationTest {
  protected:
    AlarmBarTest() {
        server.MakeUsual();
        Be(EState::Connected);
        bar = std::make_unique<AlarmBar>(*situation, &window);
        bar->BindReconnect(QStringLiteral("/Server/Command/ReconnectModules"));
        window.resize(800, 200);
        window.show();
    }

    void Lose(std::vector<double> frequencies) { server.Suppress(2, 1, {}, std::move(frequencies)); }
    std::string Text() const {
        return bar->findChild<QLabel*>(QStringLiteral("AlarmText"))->text().toStdString();
    }
    QPushButton* Button(const char* name) const {
        return bar->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    /// Once the bar shows what holds, which may wait for the next refresh.
    void Click(const char* name) {
        EXPECT_TRUE(WaitUntil([] { return !RefreshScheduler::Instance().IsPausing(); }));
        QTest::mouseClick(Button(name), Qt::LeftButton);
    }

    QWidget window;
    std::unique_ptr<AlarmBar> bar;
};

TEST_F(AlarmBarTest, NamesTheFrequenciesThatNobodyWatches) {
    EXPECT_FALSE(bar->isVisible());
    Lose({118.4e6, 121.5e6});
    EXPECT_TRUE(bar->isVisible());
    EXPECT_THAT(Text(), HasSubstr("NOT SUPERVISED: 118.4 MHz, 121.5 MHz."));
    EXPECT_EQ(bar->accessibleName().toStdString(), Text());
    Lose({121.5e6});
    EXPECT_THAT(Text(), Not(HasSubstr("118.4")));
    Lose({});
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(AlarmBarTest, StaysAwayOnceAcknowledgedUntilAnotherIsLost) {
    Lose({121.5e6});
    Click("Acknowledge");
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(Severity(EItem::Suppression), ESeverity::Act) << "acknowledging mends nothing";
    server.Text("Status/Master/Name", "Tower");
    EXPECT_FALSE(bar->isVisible());
    Lose({118.4e6, 121.5e6});
    EXPECT_TRUE(bar->isVisible());
}

TEST_F(AlarmBarTest, ComesAgainForOneThatIsLostOnceMore) {
    Lose({118.4e6, 121.5e6});
    Click("Acknowledge");
    Lose({118.4e6});
    EXPECT_FALSE(bar->isVisible());
    Lose({118.4e6, 121.5e6});
    EXPECT_TRUE(bar->isVisible());
}

TEST_F(AlarmBarTest, KeepsWhatWasAcknowledgedThroughALossOfTheConnection) {
    Lose({121.5e6});
    Click("Acknowledge");
    Be(EState::Lost);
    EXPECT_FALSE(bar->isVisible());
    Be(EState::Connected);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(AlarmBarTest, GivesWayToTheLossOfTheConnection) {
    Lose({121.5e6});
    Be(EState::Lost);
    EXPECT_FALSE(bar->isVisible());
    Be(EState::Connected);
    EXPECT_TRUE(bar->isVisible());
}

TEST_F(AlarmBarTest, ReconnectsOnlyWhereThatIsOffered) {
    Lose({121.5e6});
    EXPECT_FALSE(Button("AlarmReconnect")->isVisible());
    server.Flag("Command/ReconnectModules", false);
    EXPECT_TRUE(Button("AlarmReconnect")->isVisible());
    Click("AlarmReconnect");
    EXPECT_TRUE(server.Find<values::Value<bool>>("Command/ReconnectModules")->GetValue());
}

TEST_F(AlarmBarTest, DoesNotOfferToReconnectToWhoMayNot) {
    server.Flag("Command/ReconnectModules", false);
    Lose({121.5e6});
    auto* const command = server.Find<values::Value<bool>>("Command/ReconnectModules");
    command->SetWritable(false);
    EXPECT_FALSE(Button("AlarmReconnect")->isVisible());
    command->SetWritable(true);
    EXPECT_TRUE(Button("AlarmReconnect")->isVisible());
}

}  // namespace
