// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverfixture.h>

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;

class MpxOrvClientsTest : public ServerTest {
  protected:
    MpxOrvClientsTest() { Start(); }

    const QString m_name = QStringLiteral("MpxORVhostA_Receiver");
};

TEST_F(MpxOrvClientsTest, AskingForTheNodeMakesTheMpxOrv) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    EXPECT_FALSE(Exists(Dynamic(m_name)));
    Use(peer, m_name);
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 1);
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre(QStringLiteral("Receiver")));
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Idle"));
    EXPECT_EQ(Choice(Dynamic(m_name, QStringLiteral("Status/OperationMode"))), QStringLiteral("Idle"));
    EXPECT_FALSE(Flag(Dynamic(m_name, QStringLiteral("Status/IsMaster"))));
    EXPECT_EQ(Number(Dynamic(m_name, QStringLiteral("Request/Frequency"))), 30000000.0);
    EXPECT_EQ(Answer(m_name), QString()) << "joining asks for nothing";
}

TEST_F(MpxOrvClientsTest, ANewMpxOrvHasTheDefaultPolicies) {
    Use(Connect(QStringLiteral("Receiver")), m_name);
    QStringList held;
    const values::Node* const node = m_tree.FindNode(Dynamic(m_name, QStringLiteral("Policy")));
    ASSERT_NE(node, nullptr);
    for (const values::TreeItem* item : node->GetTreeItems())
        if (Flag(item->GetPathName())) held << item->GetName();
    EXPECT_EQ(node->CountChildren(), 10);
    EXPECT_THAT(held, ElementsAre(QStringLiteral("MayAlterFreqRanges"), QStringLiteral("MayAlterFreqSingle"),
                                  QStringLiteral("MayBeJobMaster"),
                                  QStringLiteral("MayReadSingleFreqFromMasterRanges"),
                                  QStringLiteral("MayRestartJob")));
}

TEST_F(MpxOrvClientsTest, ItGoesWithItsClient) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Disconnect(peer);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 0);
}

TEST_F(MpxOrvClientsTest, ItGoesWhenItsClientEndsTheSubscription) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Release(peer, m_name);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
}

TEST_F(MpxOrvClientsTest, TwoSubscriptionsOfOneClientAreOneClientUntilBothEnd) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Use(peer, m_name);
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre(QStringLiteral("Receiver")));
    Release(peer, m_name);
    EXPECT_TRUE(Exists(Dynamic(m_name)));
    Release(peer, m_name);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
}

TEST_F(MpxOrvClientsTest, ItIsStillThereWhileItsEndIsBeingTold) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    m_access->SessionEnded(peer);
    EXPECT_TRUE(Exists(Dynamic(m_name))) << "the end may come in the middle of a notification";
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre());
    m_clock.Turn();
    EXPECT_FALSE(Exists(Dynamic(m_name)));
}

TEST_F(MpxOrvClientsTest, TwoClientsShareOneName) {
    const VtPeer first = Connect(QStringLiteral("Receiver"));
    const VtPeer second = Connect(QStringLiteral("Console"));
    Use(first, m_name);
    Use(second, m_name);
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 1);
    EXPECT_THAT(ClientsOf(Dynamic(m_name)),
                ElementsAre(QStringLiteral("Receiver"), QStringLiteral("Console")));
    Disconnect(first);
    EXPECT_TRUE(Exists(Dynamic(m_name)));
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre(QStringLiteral("Console")));
    Disconnect(second);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
}

TEST_F(MpxOrvClientsTest, WhoComesBackInTheSameTurnGetsANewOneWithDefaultPolicies) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Set(Dynamic(m_name, QStringLiteral("Policy/MayCal")), true);
    m_access->SessionEnded(peer);
    Use(Connect(QStringLiteral("Receiver")), m_name);
    m_clock.Turn();
    EXPECT_TRUE(Exists(Dynamic(m_name)));
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 1);
    EXPECT_FALSE(Flag(Dynamic(m_name, QStringLiteral("Policy/MayCal"))));
}

TEST_F(MpxOrvClientsTest, OnlyTheNodeItselfIsAskedFor) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    for (const QString& path :
         {Dynamic(m_name, QStringLiteral("Status")), QStringLiteral("/MultiChannelServer/DynamicMpxORVs"),
          QStringLiteral("/MultiChannelServer/Status/x"), QStringLiteral("/elsewhere/x"),
          QStringLiteral("/")})
        m_access->ProvideNode(peer, path);
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 0);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
}

TEST_F(MpxOrvClientsTest, NamesThatCannotBeAreRefusedAndLogged) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    TakeLog();
    for (const QString& name :
         {QStringLiteral("a<b"), QStringLiteral(" a"), QStringLiteral("a\nb"), QStringLiteral("a,b"),
          QStringLiteral("."), QStringLiteral(".."), QString(129, QLatin1Char('x'))})
        EXPECT_EQ(m_access->ProvideNode(peer, Dynamic(name)),
                  QStringLiteral("this cannot be the name of an MpxORV"));
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), 0);
    EXPECT_THAT(TakeLog(),
                Contains(QStringLiteral("Receiver on hostA (127.0.0.1:50001) may not use a(b: this cannot be "
                                        "the name of an MpxORV")));
}

TEST_F(MpxOrvClientsTest, AClientCanUseABoundedNumber) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    for (int i = 0; i <= MpxOrvRegistry::MaxPerSession; ++i)
        Use(peer, QStringLiteral("Name%1").arg(i));
    EXPECT_EQ(Count(QStringLiteral("DynamicMpxORVs")), MpxOrvRegistry::MaxPerSession);
    EXPECT_EQ(m_access->ProvideNode(peer, Dynamic(QStringLiteral("one more"))),
              QStringLiteral("a client may use %1 MpxORVs at most").arg(MpxOrvRegistry::MaxPerSession));
}

TEST_F(MpxOrvClientsTest, MarkupInNamesOfApplicationsIsNotShownAsSuch) {
    const VtPeer peer = Connect(QStringLiteral("<img src=x>"));
    Use(peer, m_name);
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre(QStringLiteral("(img src=x)")));
    for (const QString& line : TakeLog())
        EXPECT_FALSE(line.contains(QLatin1Char('<'))) << line.toStdString();
}

TEST_F(MpxOrvClientsTest, ComingAndGoingIsLogged) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Disconnect(peer);
    EXPECT_THAT(TakeLog(),
                ElementsAre(QStringLiteral("Receiver on hostA (127.0.0.1:50001) is connected as operator"),
                            QStringLiteral("Receiver on hostA (127.0.0.1:50001) uses MpxORVhostA_Receiver"),
                            QStringLiteral("Receiver on hostA (127.0.0.1:50001) has gone"),
                            QStringLiteral("MpxORVhostA_Receiver is removed, its last client has gone")));
}

TEST_F(MpxOrvClientsTest, AClientThatGoesGivesUpWhatItHad) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    Use(peer, m_name);
    Tune(peer, m_name, 145e6);
    Push(peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
    EXPECT_TRUE(Flag(QStringLiteral("/MultiChannelServer/Status/McsMasterJobControlled")));
    Disconnect(peer);
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
    EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), 4);
    EXPECT_FALSE(Flag(QStringLiteral("/MultiChannelServer/Status/McsMasterJobControlled")));
}

class StaticMpxOrvTest : public ServerTest {
  protected:
    StaticMpxOrvTest() {
        Configure("[StaticMpxORVs]\nNames=Alpha\n");
        Start();
    }
    const QString m_name = QStringLiteral("Alpha");
};

TEST_F(StaticMpxOrvTest, StaysWhenItsLastClientGoes) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    UseStatic(peer, m_name);
    EXPECT_THAT(ClientsOf(Static(m_name)), ElementsAre(QStringLiteral("Receiver")));
    Disconnect(peer);
    EXPECT_TRUE(Exists(Static(m_name)));
    EXPECT_THAT(ClientsOf(Static(m_name)), ElementsAre());
    EXPECT_EQ(Count(QStringLiteral("StaticMpxORVs")), 1);
}

TEST_F(StaticMpxOrvTest, IsNotMadeOnRequest) {
    UseStatic(Connect(QStringLiteral("Receiver")), QStringLiteral("Bravo"));
    EXPECT_FALSE(Exists(Static(QStringLiteral("Bravo"))));
}

TEST_F(StaticMpxOrvTest, WritingARequestMakesAClientToo) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    EXPECT_EQ(Write<values::Value<bool>>(peer, Static(m_name, QStringLiteral("Request/RestartJob")), true),
              QString());
    EXPECT_THAT(ClientsOf(Static(m_name)), ElementsAre(QStringLiteral("Receiver")));
    EXPECT_EQ(Text(Static(m_name, QStringLiteral("Request/Answer"))),
              QStringLiteral("done: the job starts anew"));
}

}  // namespace
