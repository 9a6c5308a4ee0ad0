// SPDX-License-Identifier: Apache-2.0
// What the server's saves ask of the system.
#include <platform/config/cfgcenter.h>

#include <tests/apps/mcserver/serverfixture.h>
#include <tests/support/filecalls_glibc.h>

namespace {

class SavesOfTheServer : public ServerTest {
  protected:
    /// Those of \a action.
    template <class Action>
    std::vector<int> Calls(Action action) {
        filecalls::Start(m_directory.path());
        action();
        return filecalls::GetCalls();
    }
};

TEST_F(SavesOfTheServer, AreOneTransactionEach) {
    Configure("[StaticMpxORVs]\nNames=\"Tower, Van\"\n");
    QString error;
    ASSERT_TRUE(CfgCenter::Instance().HoldStore(&error)) << error.toStdString();
    EXPECT_EQ(Calls([this] { Start(); }), filecalls::OneTransaction) << "of the keys that are missing";
    Set(QStringLiteral("/MultiChannelServer/Config/ForceConnect"), true);
    const auto push = [] { Set(QStringLiteral("/MultiChannelServer/Config/SaveConfig"), true); };
    EXPECT_EQ(Calls(push), filecalls::OneTransaction) << "by the button";
    EXPECT_EQ(Calls(push), std::vector<int>(5, 0)) << "where nothing has changed";
    Set(Static(QStringLiteral("Van"), QStringLiteral("Policy/MayCal")), true);
    EXPECT_EQ(Calls([this] { m_server->Stop(); }), filecalls::OneTransaction) << "at the end";
}

}  // namespace
