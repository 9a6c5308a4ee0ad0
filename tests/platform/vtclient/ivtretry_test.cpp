// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneclient.h>
#include <tests/support/printing.h>

using namespace std::chrono_literals;

namespace {

class VtRetry : public LoneClient {
  protected:
    IVtRetry& Retry() { return dynamic_cast<IVtRetry&>(static_cast<IVtClient&>(*m_client)); }
    /// The server ends the connection.
    void Lose() {
        Say(vt::ByeMessage{vt::EBye::ServerEnds, QStringLiteral("the server ends")});
        ASSERT_FALSE(m_client->IsConnected());
    }
};

TEST_F(VtRetry, NothingIsWaitedForWhileConnected) {
    Welcome();
    EXPECT_EQ(Retry().GetTimeToRetry(), std::nullopt);
    Retry().RetryNow();
    EXPECT_TRUE(m_client->IsConnected());
    EXPECT_FALSE(m_connector->isConnecting);
}

TEST_F(VtRetry, AfterALossItIsKnownWhenTheNextAttemptIs) {
    Welcome();
    Lose();
    const auto wait = Retry().GetTimeToRetry();
    ASSERT_TRUE(wait);
    EXPECT_GT(*wait, 0ms);
    EXPECT_LE(*wait, 200ms) << "the first pause, and as much again by chance";
    EXPECT_FALSE(m_connector->isConnecting);
    m_clock.Pass(*wait);
    Settle();
    EXPECT_TRUE(m_connector->isConnecting);
    EXPECT_EQ(Retry().GetTimeToRetry(), std::nullopt) << "it is under way";
}

TEST_F(VtRetry, WhoDoesNotWantToWaitDoesNot) {
    Welcome();
    Lose();
    Retry().RetryNow();
    EXPECT_TRUE(m_connector->isConnecting);
    EXPECT_EQ(Retry().GetTimeToRetry(), std::nullopt);
}

}  // namespace
