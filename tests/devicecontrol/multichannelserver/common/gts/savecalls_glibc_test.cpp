// SPDX-License-Identifier: Apache-2.0
// What saving the list of modules asks of the system.
#include <tests/devicecontrol/multichannelserver/common/gts/gtsdisplaytest.h>
#include <tests/support/filecalls_glibc.h>

namespace {

using SavesOfModules = GTSDisplayTest;

TEST_F(SavesOfModules, AreOneTransactionHoweverManyThereAre) {
    constexpr int Count = 30;
    PutCount(Count);
    for (int i = 0; i < Count; ++i)
        PutModule(i, i, "ADAM-6051", "10.0.0.1", 50);
    PutModule(Count - 1, 0, "", "", 0);  // which cannot be used, and is kept elsewhere
    ASSERT_TRUE(Gts()->CommitKey(Text("ModuleCount")));
    Show();
    ASSERT_EQ(Rows().topLevelItemCount(), Count - 1);
    filecalls::Start(m_directory.path());
    m_display.reset();
    EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction);
}

}  // namespace
