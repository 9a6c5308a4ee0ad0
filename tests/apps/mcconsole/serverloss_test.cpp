// SPDX-License-Identifier: Apache-2.0
// What the console shows while its server is away.
#include <tests/apps/mcconsole/consolefixture.h>

#include <gmock/gmock.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

using namespace std::chrono_literals;

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ServerLossTest : public ConsoleTest {
  protected:
    std::string Says() const { return Banner()->text().toStdString(); }
    QPushButton* TryNow() { return window->findChild<QPushButton*>(QStringLiteral("TryNow")); }
    void Lose() {
        server.Kill();
        ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    }
};

TEST_F(ServerLossTest, TheLastContentIsKeptUnderTheVeil) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const name = Find<QLineEdit>("Configuration", "deviceNameDisp");
    ASSERT_TRUE(WaitFor([&] { return !name->text().isEmpty(); }));
    const QString before = name->text();
    const auto* const list = Find<QTableView>("MpxORVs", "MpxORVList");
    ASSERT_TRUE(WaitFor([&] { return list->model()->rowCount() == 1; }));
    ASSERT_NO_FATAL_FAILURE(Lose());
    EXPECT_EQ(name->text(), before);
    EXPECT_THAT(name->accessibleDescription().toStdString(), HasSubstr("the last content known"));
    EXPECT_EQ(Label("Status", "onlineDisp"), QStringLiteral("Online"));
    EXPECT_THAT(Find<QLabel>("Status", "onlineDisp")->accessibleDescription().toStdString(),
                HasSubstr("Not connected"));
    EXPECT_EQ(list->model()->rowCount(), 1);
    EXPECT_TRUE(WaitFor([&] { return list->accessibleDescription() == QLatin1String("Not connected"); }));
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([&] { return name->accessibleDescription().isEmpty(); }));
    EXPECT_TRUE(WaitFor([&] { return list->accessibleDescription().isEmpty(); }));
}

TEST_F(ServerLossTest, TheOwnMpxOrvIsKeptUnderTheVeilToo) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    const auto* const mode = Find<QLabel>("MyMpxORV", "OperationMode");
    const auto* const interval = Find<QComboBox>("MyMpxORV", "ReportInterval");
    const auto* const policy = Find<QCheckBox>("MyMpxORV", "MayAlterFreqSingle");
    ASSERT_TRUE(WaitFor([&] { return mode->text() == QLatin1String("Idle") && interval->count() > 0; }));
    ASSERT_TRUE(WaitFor([&] { return policy->isChecked(); }));
    ASSERT_NO_FATAL_FAILURE(Lose());
    EXPECT_EQ(mode->text(), QStringLiteral("Idle"));
    EXPECT_THAT(mode->accessibleDescription().toStdString(), HasSubstr("the last content known"));
    EXPECT_GT(interval->count(), 0);
    EXPECT_TRUE(policy->isChecked());
    EXPECT_THAT(policy->accessibleDescription().toStdString(), HasSubstr("the last content known"));
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([&] { return mode->accessibleDescription().isEmpty(); }));
    EXPECT_EQ(mode->text(), QStringLiteral("Idle"));
    window->GetSession().Disconnect();
    EXPECT_EQ(mode->text(), QString()) << "who disconnects keeps nothing";
}

TEST_F(ServerLossTest, TheBarSaysSinceWhenWhyAndWhenTheNextTryIs) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(Lose());
    EXPECT_THAT(Says(), HasSubstr(" is lost: "));
    EXPECT_THAT(Says(), HasSubstr("Lost at "));
    EXPECT_THAT(Says(), HasSubstr(" old."));
    EXPECT_TRUE(WaitFor([this] { return Banner()->text().contains(QLatin1String("The next try is in ")); }));
    EXPECT_TRUE(TryNow()->isVisible());
    EXPECT_TRUE(WaitFor([this] { return Banner()->text().contains(QLatin1String("refused")); })) << Says();
    EXPECT_THAT(Says(), Not(AllOf(HasSubstr("under way"), HasSubstr("The next try")))) << "it is one of them";
}

TEST_F(ServerLossTest, WhatWasHeldIsOfferedOnEveryPage) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "bootStateDisp") == QLatin1String("Ready"); }));
    Type(Find<QLineEdit>("MyMpxORV", "Frequency"), "121.5");
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    ASSERT_NO_FATAL_FAILURE(Lose());
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    const auto* const bar = window->findChild<QWidget*>(QStringLiteral("RestoreBar"));
    EXPECT_TRUE(WaitFor([&] { return bar->isVisible(); }));
    EXPECT_THAT(bar->findChild<QLabel*>()->text().toStdString(), HasSubstr("Was at 121.5 MHz until "));
    Page("Overview");
    EXPECT_FALSE(bar->isVisible()) << "it stands at the head of that page";
    EXPECT_TRUE(window->findChild<QWidget*>(QStringLiteral("RestoreOffer"))->isVisible());
    Page("Status");
    QTest::mouseClick(bar->findChild<QPushButton*>(QStringLiteral("Restore")), Qt::LeftButton);
    EXPECT_TRUE(WaitFor([this] { return Label("MyMpxORV", "TunedTo") == QLatin1String("121.500 MHz"); }));
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(ServerLossTest, WhoDoesNotWantToWaitTriesNow) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(Lose());
    // Until the pauses are so long that waiting for one of them would be noticed.
    ASSERT_TRUE(WaitFor([this] {
        const auto wait = window->GetSession().GetTimeToRetry();
        return wait && *wait > 1500ms && TryNow()->isVisible();
    }));
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    QTest::mouseClick(TryNow(), Qt::LeftButton);
    EXPECT_EQ(window->GetSession().GetTimeToRetry(), std::nullopt) << "it is tried";
    EXPECT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
}

TEST_F(ServerLossTest, AnotherDisconnectionKeepsNothing) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    window->GetSession().Disconnect();
    EXPECT_EQ(Label("Status", "onlineDisp"), QStringLiteral("- - -"));
    EXPECT_FALSE(TryNow()->isVisible());
}

}  // namespace
