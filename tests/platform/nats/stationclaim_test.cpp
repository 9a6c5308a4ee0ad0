// SPDX-License-Identifier: Apache-2.0
// Who gets a station that several ask for.
#include <platform/nats/session/stationclaim.h>
#include <tests/platform/nats/memorybus.h>

#include <gtest/gtest.h>

namespace {

using EState = nats::NatsStation::EState;
using EWhat = nats::Presence::EWhat;

class ClaimOfAStation : public testing::Test {
  protected:
    ClaimOfAStation()
        : m_claim(m_bus, QStringLiteral("tower"), nats::NatsStation::Description(),
                  [this](EState state, const QString&) { m_state = state; }) {
        m_bus->Open(true);
        m_claim.Start();
    }
    /// What it has said last.
    nats::Presence Said() const {
        const QByteArray& data = m_bus->published.back().data;
        return *nats::Presence::Read({data.constData(), static_cast<std::size_t>(data.size())});
    }
    /// Somebody else, whose number is larger or smaller, says \a what.
    void Hear(EWhat what, bool isLarger) {
        nats::Presence other = Said();
        other.what = what;
        other.instance = isLarger ? ~quint64(0) : 0;
        m_bus->Deliver("mcs.tower.claim", other.Write());
    }

    std::shared_ptr<MemoryBus> m_bus = std::make_shared<MemoryBus>();
    EState m_state = EState::Connecting;
    nats::StationClaim m_claim;
};

TEST_F(ClaimOfAStation, YieldsToASmallerNumber) {
    Hear(EWhat::Claims, false);
    EXPECT_EQ(m_state, EState::Taken);
}

// A third with a still smaller number would take that for the word of who has the station.
TEST_F(ClaimOfAStation, ThatIsNotDecidedIsRepeatedToALargerNumberAndNotCalledHeld) {
    const std::size_t before = m_bus->published.size();
    Hear(EWhat::Claims, true);
    EXPECT_EQ(m_state, EState::Claiming);
    ASSERT_EQ(m_bus->published.size(), before + 1);
    EXPECT_EQ(Said().what, EWhat::Claims);
}

TEST_F(ClaimOfAStation, YieldsToWhoHasIt) {
    Hear(EWhat::Holds, true);
    EXPECT_EQ(m_state, EState::Taken);
}

}  // namespace
