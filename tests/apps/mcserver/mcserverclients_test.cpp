// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/refusals.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>

#include <memory>

namespace {

using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

/// Applications of this process, each with its part of the tree, against the program over a socket.
class McServerClientsTest : public testing::Test, public values::IRefusalListener {
  protected:
    McServerClientsTest() { values::Refusals::Instance().AddListener(this); }
    ~McServerClientsTest() override {
        values::Refusals::Instance().RemoveListener(this);
        VtClientCenter::Instance().SetOptions(VtClientOptions());
    }
    void OnRefused(values::TreeItem* /*item*/, const QString& /*path*/, const QString& reason) override {
        m_refusals << reason;
    }

    /// An application that mirrors everything below "/<name>".
    std::unique_ptr<MultiChannelServerClient> Connect(const QString& name) {
        auto client = std::make_unique<MultiChannelServerClient>();
        EXPECT_TRUE(client->ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port()));
        EXPECT_TRUE(client->ConnectToMCSControlTree(QLatin1Char('/') + name,
                                                    static_cast<EMCSControlTreeSegments>(31)));
        EXPECT_TRUE(ServerProcess::WaitFor([&] { return client->IsMCSControlTreeConnected(); }));
        client->SetUniqueMpxORVName(name);
        return client;
    }
    template <class V>
    static V* Find(const QString& path) {
        return values::FindValue<V>(path, nullptr, nullptr);
    }
    static bool WaitForText(const QString& path, const QString& text) {
        const bool isThere = ServerProcess::WaitFor([&] {
            const auto* const value = Find<Value<QString>>(path);
            return value != nullptr && value->GetValue() == text;
        });
        if (!isThere && Find<Value<QString>>(path) != nullptr)
            ADD_FAILURE() << Find<Value<QString>>(path)->GetValue().toStdString();
        return isThere;
    }
    template <class V>
    static V* WaitForValue(const QString& path) {
        EXPECT_TRUE(ServerProcess::WaitFor([&] { return Find<V>(path) != nullptr; })) << path.toStdString();
        return Find<V>(path);
    }
    static bool WaitUntilReady(const QString& base) {
        return ServerProcess::WaitFor([&] {
            const auto* const state = Find<ValueSelection>(base + QStringLiteral("/Status/BootState"));
            return state != nullptr && state->GetCurrentText() == QLatin1String("Ready");
        });
    }

    values::Tree m_tree;
    ServerProcess m_server;
    QStringList m_refusals;
};

TEST_F(McServerClientsTest, AnApplicationGetsItsMpxOrvTunesItAndTheServerTakesItBack) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    auto receiver = Connect(QStringLiteral("Receiver"));
    const auto console = Connect(QStringLiteral("Console"));
    ASSERT_NE(receiver->CreateAndConnectDynamicMpxORV(QString()), nullptr);
    const QString own = QStringLiteral("/Receiver/DynamicMpxORVs/Receiver");
    auto* const frequency = WaitForValue<ValueNumeric<double>>(own + QStringLiteral("/Request/Frequency"));
    ASSERT_NE(frequency, nullptr);
    ASSERT_TRUE(WaitUntilReady(QStringLiteral("/Receiver")));
    frequency->SetValue(145e6);
    EXPECT_TRUE(
        WaitForText(own + QStringLiteral("/Request/Answer"), QStringLiteral("done: tuned to 145 MHz")));

    const QString seen = QStringLiteral("/Console/DynamicMpxORVs/Receiver");
    EXPECT_TRUE(WaitForText(seen + QStringLiteral("/Status/OperationType"), QStringLiteral("FFM 145 MHz")));
    receiver.reset();
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return m_tree.FindItem(seen) == nullptr; }));
    const QString used = QStringLiteral("/Console/Status/UsedFreqChannels");
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return Find<ValueNumeric<int>>(used)->GetValue() == 0; }));
}

TEST_F(McServerClientsTest, AKilledServerStillKnowsWhoSwitchedTheBlankingOfAStaticMpxOrv) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"), "[StaticMpxORVs]\nNames=Mast\n");
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    auto first = Connect(QStringLiteral("First"));
    auto* const blanking = WaitForValue<Value<bool>>(QStringLiteral("/First/StaticMpxORVs/Mast/Blanking"));
    ASSERT_NE(blanking, nullptr);
    blanking->SetValue(false);
    auto* const by =
        WaitForValue<Value<QString>>(QStringLiteral("/First/StaticMpxORVs/Mast/Status/BlankingSwitchedBy"));
    ASSERT_NE(by, nullptr);
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return !by->GetValue().isEmpty(); }));
    const QString told = by->GetValue();
    ASSERT_TRUE(ServerProcess::WaitFor([this] {
        QFile file(m_server.ConfigPath());
        return file.open(QIODevice::ReadOnly) && file.readAll().contains("BlankingSwitchedBy=");
    }));
    m_server.Kill();
    first.reset();
    ASSERT_NO_FATAL_FAILURE(m_server.Restart());
    const auto second = Connect(QStringLiteral("Second"));
    EXPECT_TRUE(WaitForText(QStringLiteral("/Second/StaticMpxORVs/Mast/Status/BlankingSwitchedBy"), told));
    const auto* const kept = WaitForValue<Value<bool>>(QStringLiteral("/Second/StaticMpxORVs/Mast/Blanking"));
    ASSERT_NE(kept, nullptr);
    EXPECT_FALSE(kept->GetValue());
}

TEST_F(McServerClientsTest, AnApplicationSeesHowLongTextsMayBeAndIsHeldToIt) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start({QStringLiteral("--text-length"), QStringLiteral("5000"),
                                            QStringLiteral("--comment-length"), QStringLiteral("1500")}));
    auto receiver = Connect(QStringLiteral("Receiver"));
    ASSERT_NE(receiver->CreateAndConnectDynamicMpxORV(QString()), nullptr);
    const auto limitAt = [](const char* name) {
        const auto* const limit =
            WaitForValue<Value<int>>(QStringLiteral("/Receiver/Status/") + QLatin1String(name));
        return limit == nullptr ? 0 : limit->GetValue();
    };
    EXPECT_EQ(limitAt("MaxTextLength"), 5000);
    EXPECT_EQ(limitAt("MaxCommentLength"), 1500);
    const QString seen = QStringLiteral("/Receiver/DynamicMpxORVs/Receiver/Status/Comment");
    auto* const comment = WaitForValue<Value<QString>>(seen);
    ASSERT_NE(comment, nullptr);
    const auto console = Connect(QStringLiteral("Console"));
    const QString longest(1500, QLatin1Char('x'));
    comment->SetValue(longest);
    EXPECT_TRUE(WaitForText(QStringLiteral("/Console/DynamicMpxORVs/Receiver/Status/Comment"), longest));
    comment->SetValue(longest + QLatin1Char('x'));
    EXPECT_TRUE(ServerProcess::WaitFor([this] { return !m_refusals.isEmpty(); }));
    EXPECT_THAT(m_refusals.join(QLatin1Char('\n')).toStdString(),
                testing::HasSubstr("a text has at most 1500 characters here, this one has 1501"));
    EXPECT_TRUE(WaitForText(seen, longest));
}

TEST_F(McServerClientsTest, AnMpxOrvMirroredByItselfIsMadeAndGoesWithItsHandle) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    const auto console = Connect(QStringLiteral("Console"));
    MultiChannelServerClient receiver;
    receiver.SetUniqueMpxORVName(QStringLiteral("Receiver"));
    receiver.ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port());
    MpxORVHandle* const handle = receiver.CreateAndConnectDynamicMpxORV(QStringLiteral("/own"));
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return handle->IsControlTreeConnected(); }));
    EXPECT_NE(WaitForValue<Value<bool>>(QStringLiteral("/own/Policy/MayBeJobMaster")), nullptr);
    const QString seen = QStringLiteral("/Console/DynamicMpxORVs/Receiver");
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return m_tree.FindItem(seen) != nullptr; }));
    delete handle;
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return m_tree.FindItem(seen) == nullptr; }));
}

TEST_F(McServerClientsTest, JoiningChangesNoPoliciesAlsoIfTheyAreShownBeforeTheServerHasThem) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    const auto console = Connect(QStringLiteral("Console"));
    const auto receiver = Connect(QStringLiteral("Receiver"));
    MpxORVHandle* const handle = receiver->CreateAndConnectDynamicMpxORV(QString());
    ASSERT_NE(handle, nullptr);
    MCSPolicySet& policies = handle->GetPolicySet();
    EXPECT_FALSE(policies.Contains(MCSPolicy::MAYBEJOBMASTER)) << "nothing is known yet";
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return policies.Contains(MCSPolicy::MAYBEJOBMASTER); }));
    EXPECT_FALSE(policies.Contains(MCSPolicy::MAYCAL));
    auto* const seen =
        WaitForValue<Value<bool>>(QStringLiteral("/Console/DynamicMpxORVs/Receiver/Policy/MayBeJobMaster"));
    ASSERT_NE(seen, nullptr);
    EXPECT_TRUE(seen->GetValue());
    EXPECT_THAT(m_refusals, testing::IsEmpty());
}

TEST_F(McServerClientsTest, AClientCannotSwitchItsOwnPolicies) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    const auto receiver = Connect(QStringLiteral("Receiver"));
    ASSERT_NE(receiver->CreateAndConnectDynamicMpxORV(QString()), nullptr);
    auto* const mayCal =
        WaitForValue<Value<bool>>(QStringLiteral("/Receiver/DynamicMpxORVs/Receiver/Policy/MayCal"));
    ASSERT_NE(mayCal, nullptr);
    mayCal->SetValue(true);
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return !m_refusals.isEmpty(); }));
    EXPECT_THAT(m_refusals, testing::ElementsAre(
                                QStringLiteral("nobody switches the policies of an MpxORV that it uses")));
    EXPECT_FALSE(mayCal->GetValue());
}

TEST_F(McServerClientsTest, TwoApplicationsOfOneNameShareTheMpxOrv) {
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    const auto console = Connect(QStringLiteral("Console"));
    std::vector<std::unique_ptr<MultiChannelServerClient>> receivers;
    const QString seen = QStringLiteral("/Console/DynamicMpxORVs/Receiver");
    for (int i = 1; i <= 2; ++i) {
        receivers.push_back(std::make_unique<MultiChannelServerClient>());
        receivers.back()->SetUniqueMpxORVName(QStringLiteral("Receiver"));
        receivers.back()->ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port());
        receivers.back()->CreateAndConnectDynamicMpxORV(QStringLiteral("/own%1").arg(i));
        EXPECT_TRUE(ServerProcess::WaitFor([&] {
            const auto* const clients =
                Find<ValueSelection>(seen + QStringLiteral("/Status/ConnectedClients"));
            return clients != nullptr && clients->Count() == i;
        }));
    }
    receivers.pop_back();
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return Find<ValueSelection>(seen + QStringLiteral("/Status/ConnectedClients"))->Count() == 1;
    }));
    EXPECT_NE(m_tree.FindItem(seen), nullptr);
}

TEST_F(McServerClientsTest, ATokenIsNeededWhereThereIsAnAccessFile) {
    const QString token = VtTokenHash::CreateToken();
    m_server.WriteFile(QStringLiteral("access"),
                       "allow viewer read /\nuser alice viewer " + VtTokenHash::Of(token).ToText().toUtf8());
    ASSERT_NO_FATAL_FAILURE(
        m_server.Start({QStringLiteral("--access"), m_server.Path(QStringLiteral("access"))}));
    VtClientOptions options;
    options.user = QStringLiteral("alice");
    options.token = QStringLiteral("guess");
    VtClientCenter::Instance().SetOptions(options);
    MultiChannelServerClient guessing;
    guessing.ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port());
    EXPECT_TRUE(
        ServerProcess::WaitFor([&] { return !guessing.GetVtClientToUse()->GetLastError().isEmpty(); }));
    EXPECT_TRUE(
        guessing.GetVtClientToUse()->GetLastError().contains(QStringLiteral("user or token is wrong")))
        << guessing.GetVtClientToUse()->GetLastError().toStdString();
    guessing.DisconnectFromServer();
    options.token = token;
    VtClientCenter::Instance().SetOptions(options);
    const auto viewer = Connect(QStringLiteral("Viewer"));
    EXPECT_TRUE(viewer->IsConnectedToServer());
}

}  // namespace
