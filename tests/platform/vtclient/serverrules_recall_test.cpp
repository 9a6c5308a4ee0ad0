// SPDX-License-Identifier: Apache-2.0
// What a server answers to whoever asks what values held before.
#include <tests/platform/vtclient/serverrules.h>

#include <limits>

namespace {

using namespace serverrules;

vt::RecallMessage Recall(quint32 req, const char* path, quint64 before, quint64 count) {
    vt::RecallMessage recall;
    recall.req = req;
    recall.path = S(path);
    recall.before = before;
    recall.count = count;
    return recall;
}

/// Keeps the texts "1" to "500" of one value.
class Kept : public IVtHistory {
  public:
    void Recall(const VtHistoryQuestion& question, const Answer& answer) override {
        questions.push_back(question);
        if (isLate) return late.push_back(answer);
        if (question.path != S("/S/log")) return answer({S("nothing is kept of this"), {}, 0});
        const quint64 end = question.before == 0 ? 501 : std::min<quint64>(question.before, 501);
        VtHistoryPage page;
        for (quint64 number = end - 1; number > 0 && page.texts.size() < question.count; --number) {
            page.texts.prepend(QString(textLength, QLatin1Char('.')) + QString::number(number));
            page.next = number > 1 ? number : 0;
        }
        answer(page);
    }

    std::vector<VtHistoryQuestion> questions;
    int textLength = 0;
    bool isLate = false;
    std::vector<Answer> late;
};

class Recalls : public ServerRules {
  protected:
    Recalls() {
        m_settings.history = &m_kept;
        m_hub.reset();
        StartServer();
    }
    static QStringList OneTo(int first, int last) {
        QStringList texts;
        for (int i = first; i <= last; ++i)
            texts << QString::number(i);
        return texts;
    }
    /// The only answer since the last call.
    static vt::RecalledMessage TakeOnly(RawPeer& peer) {
        const auto answers = peer.Of<vt::RecalledMessage>();
        EXPECT_EQ(answers.size(), 1U);
        peer.messages.clear();
        return answers.empty() ? vt::RecalledMessage() : answers[0];
    }

    Kept m_kept;
};

TEST_F(Recalls, AreAnsweredPageByPage) {
    RawPeer& peer = Admitted();
    peer.Send(Recall(7, "/S/log", 0, 60));
    Run();
    vt::RecalledMessage page = TakeOnly(peer);
    EXPECT_EQ(page.req, 7U);
    EXPECT_EQ(page.result, EResult::Done);
    EXPECT_EQ(page.texts, OneTo(441, 500));
    EXPECT_EQ(page.next, 441U);
    peer.Send(Recall(8, "//S/log/", 3, 60));
    Run();
    page = TakeOnly(peer);
    EXPECT_EQ(page.texts, OneTo(1, 2));
    EXPECT_EQ(page.next, 0U);
}

TEST_F(Recalls, GetNoMoreThanOneAnswerHolds) {
    RawPeer& peer = Admitted();
    for (const quint64 count : {quint64(101), quint64(std::numeric_limits<qint64>::max())}) {
        peer.Send(Recall(1, "/S/log", 0, count));
        Run();
        EXPECT_EQ(TakeOnly(peer).texts, OneTo(401, 500));
    }
}

TEST_F(Recalls, OfNothingGetNothing) {
    RawPeer& peer = Admitted();
    peer.Send(Recall(1, "/S/log", 0, 0));
    Run();
    EXPECT_EQ(TakeOnly(peer).texts, QStringList());
}

TEST_F(Recalls, AKeeperThatGivesTooMuchEndsNoSession) {
    m_kept.textLength = 20000;
    RawPeer& peer = Admitted();
    peer.Send(Recall(1, "/S/log", 0, 100));
    Run();
    EXPECT_EQ(TakeOnly(peer).texts.size(), 3);
    EXPECT_FALSE(peer.isClosed);
}

struct DeniedRow {
    const char* name;
    const char* path;
    bool hasHistory;
    const char* reason;
};

class DeniedRecalls : public Recalls, public testing::WithParamInterface<DeniedRow> {};

TEST_P(DeniedRecalls, LearnWhy) {
    m_access.unreadable.insert(S("/S/secret"));
    if (!GetParam().hasHistory) {
        m_settings.history = nullptr;
        m_hub.reset();
        StartServer();
    }
    RawPeer& peer = Admitted();
    peer.Send(Recall(9, GetParam().path, 0, 10));
    Run();
    const vt::RecalledMessage answer = TakeOnly(peer);
    EXPECT_EQ(answer.req, 9U);
    EXPECT_EQ(answer.result, EResult::Denied);
    EXPECT_EQ(answer.reason, S(GetParam().reason));
    EXPECT_EQ(answer.texts, QStringList());
    EXPECT_FALSE(peer.isClosed);
}

INSTANTIATE_TEST_SUITE_P(
    All, DeniedRecalls,
    testing::Values(DeniedRow{"OfWhatMayNotBeRead", "/S/secret", true,
                              "'/S/secret' may not be read by 'guest'"},
                    DeniedRow{"OfWhatIsNotKept", "/S/n", true, "nothing is kept of this"},
                    DeniedRow{"OfAServerThatKeepsNothing", "/S/log", false, "nothing is kept of '/S/log'"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Recalls, OfAPathThatIsNotAbsoluteEndTheSession) {
    RawPeer& peer = Admitted();
    peer.Send(Recall(1, "S/log", 0, 1));
    Run();
    ExpectBye(peer, EBye::Malformed, "'S/log' is no absolute path");
}

TEST_F(Recalls, BeforeTheHelloEndTheSession) {
    RawPeer& peer = Connect();
    peer.Send(Recall(1, "/S/log", 0, 1));
    Run();
    ExpectBye(peer, EBye::Malformed, "the first message must be a hello");
    EXPECT_TRUE(m_kept.questions.empty());
}

TEST_F(Recalls, WithANegativeNumberEndTheSession) {
    RawPeer& peer = Admitted();
    peer.SendBytes(QByteArray::fromHex("9f1101672f532f6c6f67 20 01ff"));
    Run();
    ExpectBye(peer, EBye::Malformed, "malformed message: an unsigned integer was expected");
}

TEST_F(Recalls, AreAnsweredAtARateAndTheOthersOfAFloodAreDenied) {
    RawPeer& peer = Admitted();
    constexpr int Asked = 1000;
    for (quint32 req = 1; req <= Asked; ++req)
        peer.Send(Recall(req, "/S/log", 0, 1));
    Run();
    EXPECT_EQ(m_kept.questions.size(), std::size_t(vtlimits::RecallBurst));
    const auto waiting = static_cast<int>(vtlimits::MaxRecallsWaiting);
    EXPECT_GE(peer.Count<vt::RecalledMessage>(), Asked - waiting) << "all that do not wait are answered";
    for (int i = 0; i < 20; ++i)
        RunAfter(vtlimits::RecallInterval);
    EXPECT_EQ(peer.Count<vt::RecalledMessage>(), Asked);
    EXPECT_LE(m_kept.questions.size(), std::size_t(waiting + vtlimits::RecallBurst));
    EXPECT_FALSE(peer.isClosed);
}

TEST_F(Recalls, ComeBehindChanges) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    RawPeer& peer = Subscribed();
    peer.messages.clear();
    peer.Send(Recall(1, "/S/log", 0, 100));
    n->SetValue(5);
    Run();
    ASSERT_EQ(peer.messages.size(), 2U);
    EXPECT_TRUE(std::holds_alternative<vt::BatchMessage>(peer.messages[0]));
    EXPECT_TRUE(std::holds_alternative<vt::RecalledMessage>(peer.messages[1]));
}

TEST_F(Recalls, MayBeAnsweredLaterAndAlsoWhenNobodyWaitsAnyMore) {
    m_kept.isLate = true;
    RawPeer& peer = Admitted();
    peer.Send(Recall(1, "/S/log", 0, 1));
    peer.Send(Recall(2, "/S/log", 0, 1));
    Run();
    ASSERT_EQ(m_kept.late.size(), 2U);
    m_kept.late[0]({QString(), {S("late")}, 0});
    Run();
    EXPECT_EQ(TakeOnly(peer).texts, QStringList{S("late")});
    m_hub->EndAll(S("enough"));
    Run();
    m_hub.reset();
    m_kept.late[1]({QString(), {S("too late")}, 0});
}

}  // namespace
