// SPDX-License-Identifier: Apache-2.0
// The page of events, with a server.
#include <tests/apps/mcconsole/consolefixture.h>

#include <apps/mcconsole/events/eventspage.h>

#include <platform/values/value.h>

#include <tests/apps/mcconsole/paintwatcher.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>

namespace {

class ConsoleEvents : public ConsoleTest {
  protected:
    const EventModel& Model() { return window->findChild<EventsPage*>()->GetModel(); }
    bool WaitForText(const char* text) {
        return WaitFor([&] {
            for (int row = 0; row < Model().rowCount(); ++row)
                if (EventModel::TextOf(Model().LineOf(row), EventModel::TextColumn)
                        .contains(QString::fromUtf8(text)))
                    return true;
            return false;
        });
    }
};

TEST_F(ConsoleEvents, ShowWhatHappenedBeforeAndWhatHappens) {
    ConnectToServer();
    EXPECT_TRUE(WaitForText("is connected as operator")) << "which was before the page knew anything";
    Tree({QStringLiteral("set"), QStringLiteral("/MultiChannelServer/Config/DeviceName"),
          QStringLiteral("mast")});
    EXPECT_TRUE(WaitForText("DeviceName is changed from"));
    const auto isNumberedOnce = [this] {
        for (int row = 1; row < Model().rowCount(); ++row)
            if (Model().LineOf(row).event.number != Model().LineOf(row - 1).event.number + 1) return false;
        return true;
    };
    EXPECT_TRUE(isNumberedOnce());
}

TEST_F(ConsoleEvents, OfBeforeStandOnTheOverviewToo) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    ASSERT_TRUE(WaitFor([this] { return server.Output().contains(QLatin1String("operation mode Scan")); }));
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, VtClientOptions());
    const QAbstractItemModel* const last = Find<QListView>("Overview", "LastEvents")->model();
    ASSERT_TRUE(WaitFor([last] { return last->rowCount() == 5; }));
    const auto isShown = [last](const char* text) {
        for (int row = 0; row < last->rowCount(); ++row)
            if (last->index(row, 0).data().toString().contains(QLatin1String(text))) return true;
        return false;
    };
    EXPECT_TRUE(isShown("operation mode Scan"));
    // What the other one keeps may be there at once.
    bool wasEmpty = false;
    const QObject looker;
    const auto look = [&] { wasEmpty = wasEmpty || last->rowCount() == 0; };
    QObject::connect(last, &QAbstractItemModel::modelReset, &looker, look);
    QObject::connect(last, &QAbstractItemModel::rowsRemoved, &looker, look);
    window->GetSession().Disconnect();
    window->ConnectTo({QStringLiteral("localhost"), server.Port(), false}, VtClientOptions());
    look();
    EXPECT_TRUE(WaitFor([&] { return wasEmpty; })) << "what another server told";
}

TEST_F(ConsoleEvents, AreFoundByTheKeyboard) {
    ConnectToServer();
    ASSERT_TRUE(WaitForText("is connected as operator"));
    auto* const table = Find<QTableView>("Events", "EventsTable");
    table->setFocus();
    QTest::keyClick(table, Qt::Key_F, Qt::ControlModifier);
    auto* const search = Find<QLineEdit>("Events", "EventsSearch");
    EXPECT_TRUE(WaitFor([&] { return search->hasFocus(); }));
    QTest::keyClicks(search, QStringLiteral("is connected as"));
    EXPECT_TRUE(WaitFor([this] { return !Model().IsFiltering() && Model().rowCount() > 0; }));
    for (int row = 0; row < Model().rowCount(); ++row)
        EXPECT_TRUE(Model().LineOf(row).text.contains(QStringLiteral("is connected as")));
    QTest::keyClicks(search, QStringLiteral(" nobody at all"));
    EXPECT_TRUE(WaitFor([this] { return !Model().IsFiltering() && Model().rowCount() == 0; }));
}

TEST_F(ConsoleEvents, PauseAndTellHowManyAreNew) {
    ConnectToServer();
    ASSERT_TRUE(WaitForText("is connected as operator"));
    auto* const follow = Find<QPushButton>("Events", "EventsFollow");
    EXPECT_TRUE(follow->isChecked());
    QTest::mouseClick(follow, Qt::LeftButton);
    EXPECT_FALSE(follow->isChecked());
    Tree({QStringLiteral("set"), QStringLiteral("/MultiChannelServer/Config/DeviceName"),
          QStringLiteral("mast")});
    EXPECT_TRUE(WaitFor([&] { return follow->text().contains(QStringLiteral("new")); }))
        << follow->text().toStdString();
    QTest::mouseClick(follow, Qt::LeftButton);
    EXPECT_FALSE(follow->text().contains(QStringLiteral("new")));
}

TEST_F(ConsoleEvents, StayWhenTheServerIsLost) {
    ConnectToServer();
    ASSERT_TRUE(WaitForText("is connected as operator"));
    const int rows = Model().rowCount();
    server.Kill();
    EXPECT_TRUE(WaitFor([this] { return window->GetSession().GetState() == ConsoleSession::EState::Lost; }));
    EXPECT_GE(Model().rowCount(), rows);
}

/// The page in front, with more events than it has room for.
class ManyConsoleEvents : public ConsoleEvents {
  protected:
    void FillTable() {
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        m_table = Find<QTableView>("Events", "EventsTable");
        while (m_table->verticalScrollBar()->maximum() < 3 * m_table->rowHeight(0))
            ASSERT_NO_FATAL_FAILURE(Happen());
        RunTurns(3);
    }
    /// One event, and nothing else that anybody sees on this page.
    void Happen() {
        const QString path = window->GetSession().GetBasePath() + QStringLiteral("/Config/ConnectOnStartup");
        values::Value<bool>* value = nullptr;
        ASSERT_TRUE(WaitFor([&] {
            value = dynamic_cast<values::Value<bool>*>(tree->FindItem(path));
            return value != nullptr;
        }));
        const int before = Model().rowCount();
        value->SetValue(!value->GetValue());
        ASSERT_TRUE(WaitFor([&] { return Model().rowCount() > before; }));
    }

    QTableView* m_table = nullptr;
};

// In the whole window: what lies beside or over the table must not have it drawn as a whole.
TEST_F(ManyConsoleEvents, AreDrawnOneByOne) {
    ASSERT_NO_FATAL_FAILURE(FillTable());
    const int rowHeight = m_table->rowHeight(0);
    PaintWatcher watcher(*m_table->viewport());
    constexpr int events = 10;
    for (int i = 0; i < events; ++i) {
        watcher.painted = QRegion();
        ASSERT_NO_FATAL_FAILURE(Happen());
        ASSERT_TRUE(WaitFor([&] { return !watcher.painted.isEmpty(); }));
        RunTurns(3);
    }
    ASSERT_GT(m_table->viewport()->height(), 10 * rowHeight);
    EXPECT_LE(watcher.heights, events * 4 * rowHeight);
}

}  // namespace
