// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneclient.h>
#include <tests/platform/vtclient/losswatch.h>

namespace {

class VtLosses : public LoneClient {
  protected:
    VtLosses() : m_watch(*m_client) { m_client->AddTic(QStringLiteral("/L,/S"), ""); }
    void Show(quint32 sub) {
        ShowSubtree(sub, [](vt::ChangeWriter&) {});
    }
    /// The server ends the connection, and another one is there.
    void ComeBack() {
        Say(vt::ByeMessage{vt::EBye::ServerEnds, QStringLiteral("the server ends")});
        Welcome();
    }

    LossWatch m_watch;
};

TEST_F(VtLosses, TheFirstSnapshotIsNone) {
    Welcome();
    Show(1);
    ASSERT_TRUE(m_client->AreAllTicsEstablished());
    EXPECT_TRUE(m_watch.losses.empty());
}

TEST_F(VtLosses, AConnectionThatWasLostIsOneAndIsToldWhenAllIsThereAgain) {
    Welcome();
    Show(1);
    ComeBack();
    EXPECT_TRUE(m_watch.losses.empty()) << "it is not over";
    Show(1);
    ASSERT_EQ(m_watch.losses.size(), 1U);
    EXPECT_TRUE(m_watch.wasEstablished);
    EXPECT_EQ(m_watch.losses[0].path, QStringLiteral("/S"));
    EXPECT_FALSE(m_watch.losses[0].wasConnected);
    EXPECT_LE(m_watch.losses[0].from, m_watch.losses[0].until);
}

TEST_F(VtLosses, ANumberThatIsMissingIsOneAlthoughTheConnectionHolds) {
    Welcome();
    Show(1);
    ShowChanges(1, 7, [](vt::ChangeWriter&) {});
    Show(2);
    ASSERT_EQ(m_watch.losses.size(), 1U);
    EXPECT_TRUE(m_watch.losses[0].wasConnected);
}

TEST_F(VtLosses, WhatIsLostTwiceBeforeItIsThereAgainIsOne) {
    Welcome();
    Show(1);
    ShowChanges(1, 7, [](vt::ChangeWriter&) {});
    ComeBack();
    Show(1);
    ASSERT_EQ(m_watch.losses.size(), 1U);
    EXPECT_FALSE(m_watch.losses[0].wasConnected);
}

TEST_F(VtLosses, WhatTheServerTakesAwayAndBringsBackIsNone) {
    Welcome();
    Show(1);
    Say(For<vt::AbsentMessage>(1));
    Show(1);
    ASSERT_TRUE(m_client->AreAllTicsEstablished());
    EXPECT_TRUE(m_watch.losses.empty());
}

}  // namespace
