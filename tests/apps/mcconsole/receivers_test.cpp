// SPDX-License-Identifier: Apache-2.0
// The receivers of a server's device, where it is made of such.
#include <apps/mcserver/device/receiverstatus.h>
#include <apps/pages/displaypages.h>
#include <apps/pages/guimodule.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/tree.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QTableView>

namespace {

/// The page "Status" before the tree of a server whose receivers the test plays.
class ReceiversOnAPage : public testing::Test {
  protected:
    ReceiversOnAPage() {
        m_page.resize(1000, 700);
        m_page.show();
        m_first.address = QStringLiteral("tower1:4532");
        m_first.name = QStringLiteral("Maker Model");
        m_first.state = ReceiverFacts::EState::Connected;
        m_first.hz = 121.5e6;
        m_first.mode = QStringLiteral("AM");
        m_first.strength = -42;
    }
    ~ReceiversOnAPage() override { m_page.Bind(QString(), NoSegments); }

    void Bind() { m_page.Bind(mcskeys::Root, AllSegments); }
    void Lose() {
        m_first.Reset(ReceiverFacts::EState::Error, ECode::NoReceiverConnection);
        m_status.Show(0, m_first);
    }
    QTableView& Table() const { return *m_page.findChild<QTableView*>(QStringLiteral("Receivers")); }
    /// The cells of a row but the moment, with bars between them.
    std::string Row(int row) const {
        const QAbstractItemModel& model = *Table().model();
        QStringList cells;
        for (const int column : {0, 1, 3, 4, 5, 6})
            cells << model.index(row, column).data().toString();
        return cells.join(QLatin1Char('|')).toStdString();
    }
    bool Becomes(const std::string& text) {
        const bool is = WaitUntil([&] { return Row(0) == text; });
        EXPECT_EQ(Row(0), text);
        return is;
    }

    values::Tree m_tree;
    ManualClock m_clock;
    ReceiverStatus m_status{m_clock};
    ReceiverFacts m_first;
    StatusPage m_page;
};

TEST_F(ReceiversOnAPage, AreNotThereForADeviceWithoutSuch) {
    Bind();
    EXPECT_FALSE(Table().isVisible());
}

TEST_F(ReceiversOnAPage, AreShownWithWhatTheyReceive) {
    m_status.Show(0, m_first);
    m_status.Show(1, ReceiverFacts());
    Bind();
    EXPECT_TRUE(Table().isVisible());
    EXPECT_EQ(Row(0), "1 (tower1:4532)|Connected|121.500|AM|-42|");
    EXPECT_EQ(Row(1), "2|Disconnected||||") << "nothing is known of it";
    EXPECT_EQ(Table().model()->index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("Maker Model"));
}

TEST_F(ReceiversOnAPage, SaySinceWhenAndWhyOneIsLost) {
    m_status.Show(0, m_first);
    Bind();
    const QVariant sign = Table().model()->index(0, 1).data(Qt::ForegroundRole);
    Lose();
    EXPECT_TRUE(Becomes("1 (tower1:4532)|Lost||||no connection"));
    EXPECT_NE(Table().model()->index(0, 2).data().toString(), QString());
    EXPECT_NE(Table().model()->index(0, 1).data(Qt::ForegroundRole), sign);
}

TEST_F(ReceiversOnAPage, AreCountedInTheirOrder) {
    for (int i = 0; i < 11; ++i)
        m_status.Show(i, m_first);
    Bind();
    EXPECT_EQ(Row(9).substr(0, 3), "10 ");
}

TEST_F(ReceiversOnAPage, AreNotLiveWhileTheServerIsLost) {
    m_status.Show(0, m_first);
    Bind();
    dynamic_cast<values::ValueBase*>(
        m_tree.FindItem(QStringLiteral("/MultiChannelServer/Status/Receivers/1/State")))
        ->SetState(values::Stale);
    EXPECT_TRUE(Becomes("1 (tower1:4532)|Connected when last heard of|121.500|AM|-42|"));
}

TEST_F(ReceiversOnAPage, AreNotLookedAtBehindAnotherPage) {
    m_status.Show(0, m_first);
    Bind();
    m_page.hide();
    Lose();
    Bind();
    EXPECT_EQ(Row(0), "1 (tower1:4532)|Connected|121.500|AM|-42|");
    m_page.show();
    EXPECT_EQ(Row(0), "1 (tower1:4532)|Lost||||no connection");
}

/// From before there is any window.
class GermanFromTheStart {
  protected:
    ~GermanFromTheStart() { QLocale::setDefault(QLocale::c()); }

    GuiModule m_german{QStringLiteral("de")};
};

class ReceiversInGerman : private GermanFromTheStart, public ReceiversOnAPage {};

TEST_F(ReceiversInGerman, AreToldInIt) {
    m_status.Show(0, m_first);
    Bind();
    EXPECT_EQ(m_page.findChild<QGroupBox*>(QStringLiteral("ReceiversBox"))->title(),
              QStringLiteral("Empf\u00e4nger"));
    EXPECT_EQ(Row(0), "1 (tower1:4532)|Verbunden|121,500|AM|-42|");
    Lose();
    EXPECT_TRUE(Becomes("1 (tower1:4532)|Verloren||||keine Verbindung"));
}

}  // namespace
