// SPDX-License-Identifier: Apache-2.0
// What a client learns of what values held before, with a server and without.
#include <tests/platform/vtclient/clientrules.h>

#include <limits>

namespace {

using namespace clientrules;

/// Gives back what it was asked.
class Echo : public IVtHistory {
  public:
    void Recall(const VtHistoryQuestion& question, const Answer& answer) override {
        if (isSilent) return;
        answer({QString(), {question.path, QString::number(question.count)}, question.before});
    }
    bool isSilent = false;
};

class RecallTest : public TwoEnds {
  protected:
    RecallTest() {
        m_settings.history = &m_echo;
        m_hub.reset();
        StartServer();
    }
    bool Ask(vt::VtClient& client, const char* path = "/S/log", quint64 before = 7, int count = 5) {
        return client.Recall(S(path), before, count,
                             [this](const VtHistoryPage& page) { m_pages.push_back(page); });
    }

    Echo m_echo;
    std::vector<VtHistoryPage> m_pages;
};

TEST_F(RecallTest, IsAnsweredByTheServer) {
    vt::VtClient& client = *AddClient().client;
    Settle();
    ASSERT_TRUE(Ask(client));
    EXPECT_TRUE(m_pages.empty());
    Settle();
    ASSERT_EQ(m_pages.size(), 1U);
    EXPECT_EQ(m_pages[0].refusal, QString());
    EXPECT_EQ(m_pages[0].texts, (QStringList{S("/S/log"), S("5")}));
    EXPECT_EQ(m_pages[0].next, 7U);
}

TEST_F(RecallTest, IsAnsweredWithTheReasonWhereItIsDenied) {
    m_access.unreadable.insert(S("/S"));
    vt::VtClient& client = *AddClient().client;
    Settle();
    ASSERT_TRUE(Ask(client));
    Settle();
    ASSERT_EQ(m_pages.size(), 1U);
    EXPECT_EQ(m_pages[0].refusal, S("'/S/log' may not be read by 'guest'"));
    EXPECT_TRUE(client.IsConnected());
}

TEST_F(RecallTest, IsNotAskedWhatNoServerWouldAnswer) {
    vt::VtClient& client = *AddClient().client;
    EXPECT_FALSE(Ask(client)) << "not connected yet";
    Settle();
    EXPECT_FALSE(Ask(client, "S/log"));
    EXPECT_FALSE(Ask(client, "/S/log", 0, -1));
    EXPECT_FALSE(client.Recall(QLatin1Char('/') + QString(5000, QLatin1Char('x')), 0, 1, [](const auto&) {}));
    Settle();
    EXPECT_TRUE(client.IsConnected());
}

TEST_F(RecallTest, IsAnsweredByTheLossOfTheConnection) {
    m_echo.isSilent = true;
    vt::VtClient& client = *AddClient().client;
    Settle();
    ASSERT_TRUE(Ask(client));
    Settle();
    EXPECT_TRUE(m_pages.empty());
    m_hub->EndAll(S("enough"));
    Settle();
    ASSERT_EQ(m_pages.size(), 1U);
    EXPECT_EQ(m_pages[0].refusal, S("the server refuses: enough"));
}

TEST_F(RecallTest, NobodyIsToldWhenTheClientEnds) {
    m_echo.isSilent = true;
    End& end = AddClient();
    Settle();
    ASSERT_TRUE(Ask(*end.client));
    Settle();
    end.client->Shutdown();
    Settle();
    EXPECT_TRUE(m_pages.empty());
}

TEST_F(RecallTest, TheEpochTellsOneStartOfTheServerFromAnother) {
    vt::VtClient& client = *AddClient().client;
    EXPECT_EQ(client.GetServerEpoch(), 0U);
    Settle();
    const quint64 first = client.GetServerEpoch();
    EXPECT_EQ(first, m_hub->Epoch());
    KillServer();
    Settle();
    EXPECT_EQ(client.GetServerEpoch(), 0U);
    m_hub.reset();
    StartServer();
    Pass(std::chrono::seconds(10));
    EXPECT_EQ(client.GetServerEpoch(), m_hub->Epoch());
    EXPECT_NE(client.GetServerEpoch(), first);
}

}  // namespace
