// SPDX-License-Identifier: Apache-2.0
// One window on two servers, one of which is found and reached through a real server of NATS.
#include <apps/mcconsole/connectdialog.h>

#include <platform/config/icfg.h>
#include <platform/nats/natsscheme.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/support/dialogs/modaldriver.h>

#include <gmock/gmock.h>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTableView>

namespace {

using testing::StartsWith;

class StationsAtNats : public ConsoleTest {
  protected:
    StationsAtNats() { nats::RegisterScheme(); }

    void StartBoth() {
        ASSERT_TRUE(m_nats.Start());
        server.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Tower\n");
        mast.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Mast\n");
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        ASSERT_NO_FATAL_FAILURE(mast.Start(AtNats()));
    }
    QStringList AtNats() const {
        return {QStringLiteral("--nats"), QStringLiteral("127.0.0.1:%1").arg(m_nats.Port()),
                QStringLiteral("--station"), QStringLiteral("mast"), QStringLiteral("--insecure")};
    }
    /// By Ctrl+T, as somebody who knows no more than where NATS is.
    void FindAndOpenTheStation() {
        const auto choose = [this](QWidget& widget) {
            auto* const box = widget.findChild<QGroupBox*>(QStringLiteral("Stations"));
            if (!box->isChecked()) {
                QTest::keyClick(box, Qt::Key_Space);
                auto* const field = widget.findChild<QComboBox*>(QStringLiteral("NatsAddress"));
                QTest::keyClicks(field, QStringLiteral("127.0.0.1:%1").arg(m_nats.Port()));
                QTest::keyClick(field, Qt::Key_Return);
            }
            auto* const table = widget.findChild<QTableView*>(QStringLiteral("StationTable"));
            if (table->model()->rowCount() == 0) return false;
            QTest::keyClick(table, Qt::Key_Down);
            QTest::keyClick(table, Qt::Key_Return);
            return true;
        };
        const ModalDriver user({choose});
        window->activateWindow();
        QCoreApplication::processEvents();
        QTest::keyClick(window.get(), Qt::Key_T, Qt::ControlModifier);
    }
    std::string Tab(int index) const {
        return window->findChild<QTabBar*>(QStringLiteral("StationTabs"))->tabText(index).toStdString();
    }

    NatsServer m_nats;
    ServerProcess mast;
};

TEST_F(StationsAtNats, OneIsFoundOpenedKilledAndComesBackWhileTheOtherGoesOn) {
    ASSERT_NO_FATAL_FAILURE(StartBoth());
    ASSERT_NO_FATAL_FAILURE(FindAndOpenTheStation());
    ASSERT_EQ(window->GetStations().size(), 2U);
    EXPECT_EQ(window->GetSession().GetServer().ToText(), m_nats.Address(QStringLiteral("mast")));
    ASSERT_TRUE(WaitFor([this] { return Tab(1) == "Mast: NOT TUNED"; })) << Tab(1);
    ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: NOT TUNED"; })) << Tab(0);
    mast.Kill();
    ASSERT_TRUE(WaitFor([this] { return Tab(1) == "Mast: LOST"; })) << Tab(1);
    EXPECT_EQ(Tab(0), "Tower: NOT TUNED");
    ASSERT_NO_FATAL_FAILURE(mast.Restart(AtNats()));
    EXPECT_TRUE(WaitFor([this] { return Tab(1) == "Mast: NOT TUNED"; })) << Tab(1);
    m_nats.Kill();
    EXPECT_TRUE(WaitFor([this] { return Tab(1) == "Mast: LOST"; })) << Tab(1);
    EXPECT_EQ(Tab(0), "Tower: NOT TUNED");
}

TEST_F(StationsAtNats, WhereNatsWasIsRememberedForTheNextTime) {
    ASSERT_NO_FATAL_FAILURE(StartBoth());
    ASSERT_NO_FATAL_FAILURE(FindAndOpenTheStation());
    RecentServers recent;
    recent.Read(*std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot()));
    EXPECT_EQ(recent.GetNats(), QStringList{QStringLiteral("127.0.0.1:%1").arg(m_nats.Port())});
    ASSERT_FALSE(recent.GetEntries().empty());
    EXPECT_THAT(recent.GetEntries().front().server.ToText().toStdString(), StartsWith("nats://127.0.0.1:"));
}

}  // namespace
