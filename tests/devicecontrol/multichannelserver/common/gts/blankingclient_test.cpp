// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/gts/blankingtest.h>

#include <new>
#include <type_traits>

namespace {

class ABlankingClient : public BlankingTest {
  protected:
    static constexpr double Frequency = 118100000.0;

    ABlankingClient() { Publish("Module-0", {Frequency}, 0); }
    static void Enable(BlankingClient* client, bool enable) {
        Blanking::Instance()->EnableBlankingForClient(client, enable);
    }
};

TEST_F(ABlankingClient, HasTheNameGivenOrNone) {
    const BlankingClient nobody;
    const BlankingClient somebody(Text("operator"));
    BlankingClient copy(somebody);
    EXPECT_EQ(nobody.Name(), QString());
    EXPECT_EQ(somebody.Name(), Text("operator"));
    EXPECT_EQ(copy.Name(), Text("operator"));
    copy = nobody;
    EXPECT_EQ(copy.Name(), QString());
}

TEST_F(ABlankingClient, StartsEnabled) {
    EXPECT_TRUE(IsBlanked(Frequency));
}

TEST_F(ABlankingClient, DisabledIsNotBlankedUntilItIsEnabled) {
    Enable(&m_client, false);
    EXPECT_FALSE(IsBlanked(Frequency));
    Enable(&m_client, true);
    EXPECT_TRUE(IsBlanked(Frequency));
}

TEST_F(ABlankingClient, DisabledTwiceAndEnabledOnceIsEnabled) {
    Enable(&m_client, false);
    Enable(&m_client, false);
    Enable(&m_client, true);
    EXPECT_TRUE(IsBlanked(Frequency));
}

TEST_F(ABlankingClient, EnabledWithoutHavingBeenDisabledIsEnabled) {
    Enable(&m_client, true);
    EXPECT_TRUE(IsBlanked(Frequency));
    Enable(&m_client, false);
    EXPECT_FALSE(IsBlanked(Frequency));
}

TEST_F(ABlankingClient, IsKnownByItsAddressAndNotByItsName) {
    BlankingClient namesake(m_client.Name());
    Enable(&m_client, false);
    EXPECT_FALSE(IsBlanked(Frequency, m_client));
    EXPECT_TRUE(IsBlanked(Frequency, namesake));
}

TEST_F(ABlankingClient, CopiedOrAssignedLeavesTheOtherOneAsItIs) {
    Enable(&m_client, false);
    BlankingClient copy(m_client);
    EXPECT_TRUE(IsBlanked(Frequency, copy));
    copy = m_client;
    EXPECT_TRUE(IsBlanked(Frequency, copy));
    EXPECT_FALSE(IsBlanked(Frequency, m_client));
}

TEST_F(ABlankingClient, OfNullIsNeverBlankedAndChangesNothing) {
    Enable(nullptr, false);
    Enable(nullptr, true);
    EXPECT_FALSE(Blanking::Instance()->IsFrequencyBlanked(Frequency, nullptr));
    EXPECT_TRUE(IsBlanked(Frequency));
}

TEST_F(ABlankingClient, IsForgottenWhenItDiesSoThatAnotherAtItsAddressStartsEnabled) {
    std::aligned_storage_t<sizeof(BlankingClient), alignof(BlankingClient)> place;
    auto* const first = new (&place) BlankingClient;
    Enable(first, false);
    EXPECT_FALSE(IsBlanked(Frequency, *first));
    first->~BlankingClient();
    auto* const second = new (&place) BlankingClient;
    EXPECT_TRUE(IsBlanked(Frequency, *second));
    second->~BlankingClient();
}

TEST_F(ABlankingClient, IsEnabledInANewInstance) {
    Enable(&m_client, false);
    Blanking::Instance()->FreeInstance();
    EXPECT_TRUE(IsBlanked(Frequency));
}

TEST(ABlankingClientWithoutBlanking, ComesAndGoesWithoutMakingTheInstance) {
    const values::Tree tree;
    { const BlankingClient client; }
    EXPECT_EQ(tree.FindItem(treeaccess::Text("/ORVServer")), nullptr);
}

}  // namespace
