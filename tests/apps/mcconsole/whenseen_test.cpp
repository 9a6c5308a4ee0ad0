// SPDX-License-Identifier: Apache-2.0
// What is written only while somebody sees it.
#include <apps/pages/whenseen.h>

#include <gtest/gtest.h>

#include <QtWidgets/QTabWidget>

#include <functional>
#include <memory>

namespace {

/// A page behind another one in a window of tabs.
class WhenSeenTest : public testing::Test {
  protected:
    WhenSeenTest() {
        m_tabs.addTab(m_front, QStringLiteral("Front"));
        m_tabs.addTab(m_page, QStringLiteral("Page"));
        m_tabs.show();
    }
    ~WhenSeenTest() override { m_when.reset(); }

    int m_written = 0;
    QTabWidget m_tabs;
    QWidget* const m_front = new QWidget;
    QWidget* const m_page = new QWidget;
    std::unique_ptr<WhenSeen> m_when = std::make_unique<WhenSeen>(*m_page, [this] { ++m_written; });
};

TEST_F(WhenSeenTest, WritesAtOnceWhatIsInFront) {
    m_tabs.setCurrentWidget(m_page);
    m_when->Refresh();
    m_when->Refresh();
    EXPECT_EQ(m_written, 2);
}

TEST_F(WhenSeenTest, WritesOnceWhenItComesToTheFront) {
    for (int i = 0; i < 10; ++i)
        m_when->Refresh();
    EXPECT_EQ(m_written, 0);
    m_tabs.setCurrentWidget(m_page);
    EXPECT_EQ(m_written, 1);
    m_tabs.setCurrentWidget(m_front);
    m_tabs.setCurrentWidget(m_page);
    EXPECT_EQ(m_written, 1) << "nothing was another";
}

struct AwayRow {
    const char* name;
    void (*leave)(QWidget&);
    void (*comeBack)(QWidget&);
};

class WhenWindowsGo : public WhenSeenTest, public testing::WithParamInterface<AwayRow> {};

TEST_P(WhenWindowsGo, WritesWhenTheWindowIsBack) {
    m_tabs.setCurrentWidget(m_page);
    GetParam().leave(m_tabs);
    EXPECT_FALSE(m_when->IsSeen());
    m_when->Refresh();
    EXPECT_EQ(m_written, 0);
    GetParam().comeBack(m_tabs);
    EXPECT_EQ(m_written, 1);
}

INSTANTIATE_TEST_SUITE_P(Ways, WhenWindowsGo,
                         testing::Values(AwayRow{"Minimised", [](QWidget& window) { window.showMinimized(); },
                                                 [](QWidget& window) { window.showNormal(); }},
                                         AwayRow{"Hidden", [](QWidget& window) { window.hide(); },
                                                 [](QWidget& window) { window.show(); }}),
                         [](const testing::TestParamInfo<AwayRow>& row) { return row.param.name; });

TEST_F(WhenSeenTest, KnowsTheWindowThatItWasPutInto) {
    QTabWidget other;
    other.addTab(m_page, QStringLiteral("Page"));
    other.showMinimized();
    m_when->Refresh();
    EXPECT_EQ(m_written, 0);
    other.showNormal();
    EXPECT_EQ(m_written, 1);
    m_when.reset();
}

}  // namespace
