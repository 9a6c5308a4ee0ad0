// SPDX-License-Identifier: Apache-2.0
// Values whose every change counts, changed in runs.
#include <tests/platform/vtclient/loneserver.h>

namespace {

using values::EDelivery;
using values::ValueNumeric;
using vt::EChange;
using vt::EMessage;

class OccurrenceRuns : public LoneServer {
  protected:
    void SetUp() override {
        for (const char* name : {"a", "b"}) {
            auto* const value = Add<ValueNumeric<double>>("/S", QString::fromLatin1(name));
            value->SetDelivery(EDelivery::EveryChange);
            m_values.push_back(value);
        }
        m_other = Add<ValueNumeric<int>>("/S", QStringLiteral("other"));
        m_peer = Connect();
        Subscribe(m_peer, 1, "/S");
        Hear();
        m_changes.clear();
        m_batches.clear();
    }
    void Occur(int count) {
        for (int i = 0; i < count; ++i)
            m_values[static_cast<std::size_t>(i) % m_values.size()]->SetValue(++m_occurred);
    }
    /// Takes in what the server has said, without a word.
    void Listen() {
        for (const DecodedMessage& message : Said(m_peer)) {
            if (IsAcknowledged(message.message)) ++m_toAck;
            m_changes.insert(m_changes.end(), message.changes.begin(), message.changes.end());
            if (!message.changes.empty()) m_batches.push_back(message.changes.size());
        }
    }
    /// Takes in everything, acknowledging.
    void Hear() {
        Settle(m_peer);
        Listen();
        for (quint64 before = 0; before != m_toAck;) {
            before = m_toAck;
            Acknowledge(m_peer, m_toAck);
            Listen();
        }
    }
    /// The contents of the occurrences that were heard, in order.
    std::vector<double> Heard() const {
        std::vector<double> heard;
        for (const vt::TreeChange& change : m_changes)
            if (const double* const number = std::get_if<double>(&change.item.content))
                if (change.change == EChange::Changed) heard.push_back(*number);
        return heard;
    }
    std::vector<double> Occurred() const {
        std::vector<double> all;
        for (int i = 1; i <= m_occurred; ++i)
            all.push_back(i);
        return all;
    }

    Peer m_peer;
    std::vector<ValueNumeric<double>*> m_values;
    ValueNumeric<int>* m_other = nullptr;
    int m_occurred = 0;
    quint64 m_toAck = 0;
    std::vector<vt::TreeChange> m_changes;
    std::vector<std::size_t> m_batches;  ///< how many changes each held
};

TEST_F(OccurrenceRuns, ArriveInOrderInAsManyBatchesAsItTakes) {
    Occur(100000);
    Hear();
    EXPECT_EQ(Heard(), Occurred());
    EXPECT_GT(m_batches.size(), 10U);
    EXPECT_GT(m_batches.front(), 1000U) << "and no more than that";
}

TEST_F(OccurrenceRuns, ComeOneBehindTheOtherFromTurnToTurn) {
    for (int turn = 1; turn < 50; ++turn) {
        Occur(turn * 37 % 200);
        if (turn % 3 == 0) m_other->SetValue(turn);
        Hear();
    }
    EXPECT_EQ(Heard(), Occurred());
}

TEST_F(OccurrenceRuns, WaitInOrderWhenOneTurnHasMoreThanAPart) {
    for (int turn = 0; turn < vtlimits::MaxUnackedMessages; ++turn) {
        Occur(1);
        Settle(m_peer);
    }
    Occur(30000);
    Hear();
    EXPECT_EQ(Heard(), Occurred());
}

TEST_F(OccurrenceRuns, WaitInOrderForAClientThatOwesAcknowledgements) {
    for (int turn = 0; turn < 2 * vtlimits::MaxUnackedMessages; ++turn) {
        Occur(300);
        if (turn % 5 == 0) m_other->SetValue(turn);
        Settle(m_peer);
    }
    Listen();
    EXPECT_LT(Heard().size(), static_cast<std::size_t>(m_occurred)) << "it was told all of it at once";
    Hear();
    EXPECT_EQ(Heard(), Occurred());
}

}  // namespace
