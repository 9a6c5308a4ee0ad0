// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertext.h>

#include <tests/apps/mcserver/serverfixture.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

using Bool = values::Value<bool>;

const QString NoRule = QStringLiteral("no rule of this server allows it");
const char* const SecretHash =
    "hmac-sha256$73616c7473616c7473616c7473616c74$"
    "01ea26ae75633eafc9a5db25fc0f4bd8f68e903c81b90c1c9c772df656222da3";
const char* const SlowSecretHash =
    "pbkdf2-sha256$1000$73616c7473616c7473616c7473616c74$"
    "74296f2929a3eba9fa31d31636fdc6a389af1f5626d96206889beabaa6be99f1";

class ServerAccessTest : public ServerTest {
  protected:
    ServerAccessTest() {
        Configure("[StaticMpxORVs]\nNames=Alpha\n");
        Start();
    }
    VtPeer Stranger() {
        VtPeer peer;
        peer.session = 77;
        peer.application = QStringLiteral("Receiver");
        peer.machine = QStringLiteral("hostB");
        peer.address = QStringLiteral("10.0.0.9:4000");
        return peer;
    }
    QString WhyNotWrite(const VtPeer& peer, const QString& path) {
        QString reason;
        return m_access->MayWrite(peer, path, &reason) ? QString() : reason;
    }
    bool MayCreate(const VtPeer& peer, const QString& path) {
        QString reason;
        return m_access->MayCreate(peer, path, &reason);
    }
    void UseFile(const QByteArray& text) {
        VtAccessFile file;
        QString error;
        ASSERT_TRUE(file.Parse(text, QStringLiteral("access"), &error)) << error.toStdString();
        m_access->UseFile(file);
    }

    const QString m_name = QStringLiteral("MpxORVhostA_Receiver");
};

TEST_F(ServerAccessTest, WithoutAFilePeersOfThisMachineAreOperators) {
    EXPECT_FALSE(m_access->NeedsCredentials());
    VtPeer peer = Stranger();
    peer.isLoopback = true;
    QString reason;
    EXPECT_TRUE(m_access->Admit(peer, QString(), QString(), &reason));
    EXPECT_EQ(peer.role, QStringLiteral("operator"));
    EXPECT_TRUE(m_access->MayRead(peer, QStringLiteral("/")));
}

TEST_F(ServerAccessTest, WithoutAFilePeersOfOtherMachinesMayUseMpxOrvsOnly) {
    VtPeer peer = Stranger();
    QString reason;
    EXPECT_TRUE(m_access->Admit(peer, QString(), QString(), &reason));
    EXPECT_EQ(peer.role, QStringLiteral("client"));
    EXPECT_TRUE(m_access->MayRead(peer, QStringLiteral("/MultiChannelServer")));
    Use(peer, m_name);
    EXPECT_TRUE(Exists(Dynamic(m_name)));
    EXPECT_EQ(Tune(peer, m_name, 145e6), QString());
    EXPECT_EQ(WhyNotWrite(peer, QStringLiteral("/MultiChannelServer/Command/ShallBeConnected")), NoRule);
    EXPECT_EQ(WhyNotWrite(peer, QStringLiteral("/MultiChannelServer/Config/DeviceName")), NoRule);
    EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayCal"))),
              QStringLiteral("only operators switch policies"));
}

struct Target {
    const char* name;
    const char* path;
    const char* refusal;  ///< empty: may be written
};

/// What a client of the MpxORV "Mine" and of nothing else may write, being an operator, without a file.
class OperatorWrites : public ServerAccessTest, public testing::WithParamInterface<Target> {};

TEST_P(OperatorWrites, AsTheRulesSay) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    const VtPeer other = Connect(QStringLiteral("Console"));
    Use(peer, QStringLiteral("Mine"));
    Use(other, QStringLiteral("Other"));
    const QString path = QStringLiteral("/MultiChannelServer/") + QLatin1String(GetParam().path);
    EXPECT_EQ(WhyNotWrite(peer, path), QLatin1String(GetParam().refusal));
    const auto denial = testing::ResultOf(
        [](const QString& line) { return line.contains(QLatin1String("may not write")); }, true);
    if (GetParam().refusal[0] != '\0')
        EXPECT_THAT(TakeLog(), Contains(denial));
    else
        EXPECT_THAT(TakeLog(), Not(Contains(denial)));
}

const char* const ServersOnly = "only the server writes this";
const char* const NobodysStatus = "the status is the server's own";
const Target Targets[] = {
    {"Commands", "Command/ShallBeConnected", ""},
    {"OwnBlanking", "DynamicMpxORVs/Mine/Blanking", "nobody switches the policies of an MpxORV that it uses"},
    {"BlankingOfAnother", "DynamicMpxORVs/Other/Blanking", ""},
    {"Configuration", "Config/DeviceName", ""},
    {"SaveConfig", "Config/SaveConfig", ""},
    {"SaveConfigAnswer", "Config/SaveConfigAnswer", ServersOnly},
    {"Status", "Status/Online", NobodysStatus},
    {"LogMessage", "Status/LogMessage", NobodysStatus},
    {"TheStatusNode", "Status", NobodysStatus},
    {"OwnFrequency", "DynamicMpxORVs/Mine/Request/Frequency", ""},
    {"OwnSetting", "DynamicMpxORVs/Mine/Request/DeviceSetting/ReportInterval", ""},
    {"OwnAnswer", "DynamicMpxORVs/Mine/Request/Answer", ServersOnly},
    {"OwnRequestNode", "DynamicMpxORVs/Mine/Request", ServersOnly},
    {"OwnComment", "DynamicMpxORVs/Mine/Status/Comment", ""},
    {"OwnMaster", "DynamicMpxORVs/Mine/Status/IsMaster", ServersOnly},
    {"OwnClients", "DynamicMpxORVs/Mine/Status/ConnectedClients", ServersOnly},
    {"OwnPolicy", "DynamicMpxORVs/Mine/Policy/MayCal",
     "nobody switches the policies of an MpxORV that it uses"},
    {"OtherPolicy", "DynamicMpxORVs/Other/Policy/MayCal", ""},
    {"OtherComment", "DynamicMpxORVs/Other/Status/Comment", "only clients of the MpxORV comment on it"},
    {"OtherStatus", "DynamicMpxORVs/Other/Status/IsMaster", ServersOnly},
    {"StaticPolicy", "StaticMpxORVs/Alpha/Policy/MayCal", ""},
    {"AbsentMpxOrv", "DynamicMpxORVs/None/Request/Frequency", "there is no such MpxORV"},
    {"Elsewhere", "Other/x", "no rule of this server allows it"},
};

INSTANTIATE_TEST_SUITE_P(, OperatorWrites, testing::ValuesIn(Targets),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServerAccessTest, ACommentIsShorterThanOtherTexts) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    const QString comment = QStringLiteral("Status/Comment");
    for (const QString& path : {Static(QStringLiteral("Alpha"), comment),
                                QStringLiteral("/MultiChannelServer/DynamicMpxORVs/Mine/") + comment})
        EXPECT_EQ(m_access->MaxTextLength(peer, path), 1024) << path.toStdString();
    for (const char* path :
         {"/MultiChannelServer/Config/DeviceName", "/x", "/MultiChannelServer/Status/Comment"})
        EXPECT_EQ(m_access->MaxTextLength(peer, QLatin1String(path)), 4096) << path;
}

TEST_F(ServerAccessTest, AskingMakesNobodyAClient) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    const QString request = Static(QStringLiteral("Alpha"), QStringLiteral("Request/RestartJob"));
    TakeLog();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(WhyNotWrite(peer, request), QString());
    EXPECT_TRUE(ClientsOf(Static(QStringLiteral("Alpha"))).isEmpty());
    EXPECT_TRUE(TakeLog().isEmpty());
    EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QStringLiteral("Status/Comment"))),
              QStringLiteral("only clients of the MpxORV comment on it"));
    EXPECT_EQ(Write<values::Value<bool>>(peer, request, true), QString());
    EXPECT_THAT(ClientsOf(Static(QStringLiteral("Alpha"))), ElementsAre(QStringLiteral("Receiver")));
    EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QStringLiteral("Status/Comment"))),
              QString());
}

TEST_F(ServerAccessTest, WhatIsWrittenElsewhereMakesNobodyAClient) {
    Use(Connect(QStringLiteral("Receiver")), m_name);
    const VtPeer peer = Connect(QStringLiteral("Console"));
    for (const char* const below :
         {"Policy/MayCal", "Blanking", "Status/Comment", "Request/Answer", "Request"})
        m_access->ValueWritten(peer, Dynamic(m_name, QLatin1String(below)));
    m_access->ValueWritten(peer, QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"));
    EXPECT_THAT(ClientsOf(Dynamic(m_name)), ElementsAre(QStringLiteral("Receiver")));
}

TEST_F(ServerAccessTest, WhoUsesAsManyMpxOrvsAsAnybodyMayIsRefusedWhenItAsks) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    for (int i = 0; i < MpxOrvRegistry::MaxPerSession; ++i)
        Use(peer, QStringLiteral("Name%1").arg(i));
    EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QStringLiteral("Request/RestartJob"))),
              QStringLiteral("a client may use %1 MpxORVs at most").arg(MpxOrvRegistry::MaxPerSession));
}

TEST_F(ServerAccessTest, NobodyCreatesAnythingBelowTheServersRoot) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    EXPECT_FALSE(MayCreate(peer, QStringLiteral("/MultiChannelServer/Status/x")));
    EXPECT_FALSE(MayCreate(peer, Dynamic(m_name)));
    EXPECT_FALSE(MayCreate(peer, Dynamic(m_name, QStringLiteral("x"))));
    EXPECT_FALSE(MayCreate(peer, QStringLiteral("/elsewhere")));
}

TEST_F(ServerAccessTest, AnOperatorSwitchesThePoliciesOfOthersAndTheyHoldAtOnce) {
    const VtPeer client = Connect(QStringLiteral("Receiver"));
    const VtPeer operatorPeer = Connect(QStringLiteral("Console"));
    Use(client, m_name);
    EXPECT_EQ(Switch(operatorPeer, m_name, QStringLiteral("MayCal"), true), QString());
    Push(client, m_name, QStringLiteral("Calibrate"));
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: calibration started"));
}

TEST_F(ServerAccessTest, AnMpxOrvThatIsAboutToGoTakesNoRequestsAndStaysUntilThen) {
    const VtPeer client = Connect(QStringLiteral("Receiver"));
    Use(client, m_name);
    m_access->SessionEnded(client);
    EXPECT_EQ(
        WhyNotWrite(Connect(QStringLiteral("Console")), Dynamic(m_name, QStringLiteral("Request/Frequency"))),
        QStringLiteral("there is no such MpxORV"));
    EXPECT_TRUE(Exists(Dynamic(m_name))) << "whoever asks holds a pointer to the value";
}

TEST_F(ServerAccessTest, TellsWhatMayBeWrittenBySubtrees) {
    EXPECT_THAT(m_access->WritablePrefixes(Connect(QStringLiteral("Console"))),
                ElementsAre(QStringLiteral("/MultiChannelServer/Command"),
                            QStringLiteral("/MultiChannelServer/Config"),
                            QStringLiteral("/MultiChannelServer/DynamicMpxORVs"),
                            QStringLiteral("/MultiChannelServer/StaticMpxORVs")));
}

TEST_F(ServerAccessTest, DenialsDoNotFillTheLog) {
    const VtPeer peer = Connect(QStringLiteral("Receiver"));
    TakeLog();
    for (int i = 0; i < 1000; ++i)
        WhyNotWrite(peer, QStringLiteral("/MultiChannelServer/Status/x%1").arg(i));
    EXPECT_LE(TakeLog().size(), LogLimiter::LogRates.burst);
}

class AccessByFileTest : public ServerAccessTest {
  protected:
    AccessByFileTest() {
        UseFile(QByteArray("allow operator read /\n"
                           "allow operator write /MultiChannelServer\n"
                           "allow receiver read /MultiChannelServer\n"
                           "allow receiver create /MultiChannelServer/DynamicMpxORVs\n"
                           "allow fixed read /\n"
                           "allow fixed write /MultiChannelServer/StaticMpxORVs/Alpha\n"
                           "allow viewer read /MultiChannelServer/Status\n"
                           "user alice operator ") +
                SecretHash + "\nuser bob receiver " + SecretHash + "\nuser carol receiver " + SecretHash +
                "\nuser dora fixed " + SecretHash + "\nuser certificate:console1 viewer\n");
    }
    bool Admit(VtPeer& peer, const char* user, const char* token, QString* reason) {
        return m_access->Admit(peer, QLatin1String(user), QLatin1String(token), reason);
    }
    VtPeer Admitted(const char* user) {
        VtPeer peer = Stranger();
        peer.session = ++m_session;
        QString reason;
        EXPECT_TRUE(Admit(peer, user, "secret", &reason)) << reason.toStdString();
        return peer;
    }

    int m_session = 100;
};

TEST_F(AccessByFileTest, NobodyComesInWithoutACredential) {
    EXPECT_TRUE(m_access->NeedsCredentials());
    VtPeer peer = Stranger();
    peer.isLoopback = true;
    QString reason;
    EXPECT_FALSE(Admit(peer, "", "", &reason));
    EXPECT_EQ(reason, QStringLiteral("user or token is wrong"));
    EXPECT_TRUE(peer.role.isEmpty());
}

TEST_F(AccessByFileTest, ATokenAdmitsInItsRole) {
    VtPeer peer = Stranger();
    QString reason;
    EXPECT_TRUE(Admit(peer, "alice", "secret", &reason));
    EXPECT_EQ(peer.user, QStringLiteral("alice"));
    EXPECT_EQ(peer.role, QStringLiteral("operator"));
    EXPECT_EQ(peertext::Name(peer), QStringLiteral("Receiver of alice on hostB (10.0.0.9:4000)"))
        << "two people at one machine are told apart";
}

TEST_F(AccessByFileTest, WhoHasTheNameOfItsRoleIsNotToldTwice) {
    VtPeer peer = Stranger();
    peer.user = peer.role = QStringLiteral("operator");
    EXPECT_EQ(peertext::Name(peer), QStringLiteral("Receiver on hostB (10.0.0.9:4000)"));
    peer.user = QStringLiteral("bob");
    peer.application.clear();
    EXPECT_EQ(peertext::Name(peer), QStringLiteral("bob on hostB (10.0.0.9:4000)"));
}

/// What a file says of those who use MpxORVs and switch policies, and whether they may.
struct OwnPolicies {
    const char* name;
    const char* rule;       ///< in addition
    const char* client;     ///< who uses the static MpxORV
    const char* switching;  ///< who switches a policy of it, in another session
    const char* refusal;    ///< empty: may
};

class OwnPoliciesByFile : public ServerAccessTest, public testing::WithParamInterface<OwnPolicies> {
  protected:
    OwnPoliciesByFile() {
        QByteArray text = "allow operator read /\nallow operator write /MultiChannelServer\n";
        for (const char* const user : {"alice", "bob"})
            text += QByteArray("user ") + user + " operator " + SecretHash + '\n';
        UseFile(text + GetParam().rule);
    }
    VtPeer Admitted(const char* user) {
        VtPeer peer = Stranger();
        peer.session = ++m_session;
        QString reason;
        EXPECT_TRUE(m_access->Admit(peer, QLatin1String(user), QStringLiteral("secret"), &reason));
        m_access->SessionStarted(peer);
        return peer;
    }

    int m_session = 100;
};

TEST_P(OwnPoliciesByFile, AreSwitchedByWhomItSays) {
    const VtPeer client = Admitted(GetParam().client);
    m_access->ProvideNode(client, Static(QStringLiteral("Alpha")));
    EXPECT_THAT(ClientsOf(Static(QStringLiteral("Alpha"))), ElementsAre(client.application));
    const bool isSame = qstrcmp(GetParam().client, GetParam().switching) == 0;
    for (const VtPeer& peer :
         {isSame ? client : Admitted(GetParam().switching), Admitted(GetParam().switching)})
        for (const char* const below : {"Policy/MayCal", "Blanking"})
            EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QLatin1String(below))),
                      QLatin1String(GetParam().refusal))
                << peer.session << below;
    m_access->SessionEnded(client);
    EXPECT_EQ(WhyNotWrite(Admitted(GetParam().switching),
                          Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayCal"))),
              QString())
        << "nobody uses it any more";
}

const OwnPolicies AllOwnPolicies[] = {
    {"WithoutTheRightByTheSameUser", "", "alice", "alice",
     "alice uses this MpxORV, and no rule allows it to switch policies of its own"},
    {"WithoutTheRightByAnotherUser", "", "alice", "bob", ""},
    {"WithTheRightByTheSameUser", "allow operator own-policies /MultiChannelServer/StaticMpxORVs\n", "alice",
     "alice", ""},
    {"WithTheRightForOtherMpxOrvs", "allow operator own-policies /MultiChannelServer/DynamicMpxORVs\n",
     "alice", "alice", "alice uses this MpxORV, and no rule allows it to switch policies of its own"},
};

INSTANTIATE_TEST_SUITE_P(, OwnPoliciesByFile, testing::ValuesIn(AllOwnPolicies),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServerAccessTest, WithoutAFileAnotherSessionOfThisMachineSwitchesPolicies) {
    const VtPeer client = Connect(QStringLiteral("Receiver"));
    const VtPeer other = Connect(QStringLiteral("Console"));
    EXPECT_EQ(client.user, other.user);
    Use(client, m_name);
    EXPECT_EQ(WhyNotWrite(other, Dynamic(m_name, QStringLiteral("Policy/MayCal"))), QString());
    EXPECT_EQ(WhyNotWrite(client, Dynamic(m_name, QStringLiteral("Policy/MayCal"))),
              QStringLiteral("nobody switches the policies of an MpxORV that it uses"));
}

TEST_F(AccessByFileTest, ACertificateAdmitsInItsRole) {
    VtPeer peer = Stranger();
    peer.certificateName = QStringLiteral("console1");
    QString reason;
    EXPECT_TRUE(Admit(peer, "", "", &reason));
    EXPECT_EQ(peer.user, QStringLiteral("certificate:console1"));
    EXPECT_EQ(peer.role, QStringLiteral("viewer"));
}

TEST_F(AccessByFileTest, AnUnknownCertificateAdmitsNobody) {
    VtPeer peer = Stranger();
    peer.certificateName = QStringLiteral("console2");
    QString reason;
    EXPECT_FALSE(Admit(peer, "", "", &reason));
    EXPECT_EQ(reason, QStringLiteral("the certificate's name is not known here"));
}

TEST_F(AccessByFileTest, WrongTokensDoNotKeepRightOnesOrCertificatesOutOfTheSameAddress) {
    VtPeer peer = Stranger();
    QString reason;
    for (int i = 0; i < 100; ++i) {
        EXPECT_FALSE(Admit(peer, "alice", "guess", &reason));
        EXPECT_EQ(reason, QStringLiteral("user or token is wrong"));
    }
    EXPECT_TRUE(Admit(peer, "alice", "secret", &reason)) << reason.toStdString();
    peer.certificateName = QStringLiteral("console1");
    EXPECT_TRUE(Admit(peer, "", "", &reason)) << reason.toStdString();
}

class AccessByChosenTokens : public ServerAccessTest {
  protected:
    AccessByChosenTokens() {
        QByteArray text = "allow operator read /\n";
        for (const char* const user : {"alice", "bob"})
            text += QByteArray("user ") + user + " operator " + SlowSecretHash + '\n';
        text += QByteArray("user carol operator ") + SecretHash + '\n';
        UseFile(text);
    }
    QString WhyNotAdmitted(const char* user, const char* token, const char* address = "10.0.0.9:4000") {
        VtPeer peer = Stranger();
        peer.address = QLatin1String(address);
        QString reason;
        return m_access->Admit(peer, QLatin1String(user), QLatin1String(token), &reason) ? QString() : reason;
    }
};

TEST_F(AccessByChosenTokens, WrongOnesKeepTheirUserWaitingAtThatAddressAndNobodyElse) {
    for (int i = 0; i < VtAttemptLimiter::FreeFailures; ++i)
        EXPECT_EQ(WhyNotAdmitted("alice", "guess"), QStringLiteral("user or token is wrong"));
    EXPECT_EQ(WhyNotAdmitted("alice", "secret"), QStringLiteral("too many failed attempts, wait 1 s"));
    EXPECT_EQ(WhyNotAdmitted("alice", "secret", "10.0.0.8:4000"), QString());
    EXPECT_EQ(WhyNotAdmitted("bob", "secret"), QString());
    EXPECT_EQ(WhyNotAdmitted("carol", "secret"), QString());
    m_clock.Advance(1000ms);
    EXPECT_EQ(WhyNotAdmitted("alice", "secret"), QString());
}

TEST_F(AccessByChosenTokens, CostAtMostATenthOfTheTimeFromHoweverManyAddresses) {
    int checked = 0;
    for (int i = 0; i < 250; ++i) {
        const QByteArray address = "10.1.0." + QByteArray::number(i) + ":1";
        if (WhyNotAdmitted("alice", "guess", address.constData()) == QLatin1String("user or token is wrong"))
            ++checked;
    }
    EXPECT_EQ(checked, 20);
    EXPECT_EQ(WhyNotAdmitted("bob", "secret"),
              QStringLiteral("too many tokens are to be checked at once, try again"));
    EXPECT_EQ(WhyNotAdmitted("carol", "secret"), QString());
    m_clock.Advance(100ms);
    EXPECT_EQ(WhyNotAdmitted("bob", "secret"), QString());
}

TEST_F(AccessByFileTest, RefusedAdmissionIsLoggedWithWhoAndWhyButNotWhatMayBeAToken) {
    struct {
        const char* user;
        const char* why;
    } const rows[] = {{"alice", "the token is not that of alice"},
                      {"my token", "the user is not known here"},
                      {"", "no user is given"}};
    for (const auto& row : rows) {
        TakeLog();
        VtPeer peer = Stranger();
        QString reason;
        EXPECT_FALSE(Admit(peer, row.user, "guess", &reason));
        EXPECT_EQ(reason, QStringLiteral("user or token is wrong"))
            << "which of them is not told to who guesses";
        EXPECT_THAT(TakeLog(),
                    ElementsAre(QStringLiteral("Receiver on hostB (10.0.0.9:4000) is not admitted: %1")
                                    .arg(QLatin1String(row.why))));
    }
}

TEST_F(AccessByFileTest, RolesReadWhatTheFileAllows) {
    VtPeer viewer = Stranger();
    viewer.role = QStringLiteral("viewer");
    EXPECT_TRUE(m_access->MayRead(viewer, QStringLiteral("/MultiChannelServer/Status")));
    EXPECT_FALSE(m_access->MayRead(viewer, QStringLiteral("/MultiChannelServer")));
    EXPECT_FALSE(m_access->MayRead(viewer, Dynamic(m_name)));
}

TEST_F(AccessByFileTest, OnlyRolesThatMayCreateThemGetDynamicMpxOrvs) {
    Use(Admitted("alice"), m_name);
    EXPECT_FALSE(Exists(Dynamic(m_name)));
    Use(Admitted("bob"), m_name);
    EXPECT_TRUE(Exists(Dynamic(m_name)));
}

TEST_F(AccessByFileTest, AReceiverWritesItsRequestsAndNothingElse) {
    const VtPeer peer = Admitted("bob");
    Use(peer, m_name);
    EXPECT_EQ(Tune(peer, m_name, 145e6), QString());
    EXPECT_EQ(WhyNotWrite(peer, QStringLiteral("/MultiChannelServer/Command/ShallBeConnected")), NoRule);
    EXPECT_EQ(WhyNotWrite(peer, Dynamic(m_name, QStringLiteral("Policy/MayCal"))),
              QStringLiteral("only operators switch policies"));
    EXPECT_EQ(WhyNotWrite(peer, Static(QStringLiteral("Alpha"), QStringLiteral("Request/Frequency"))),
              NoRule);
    EXPECT_THAT(m_access->WritablePrefixes(peer),
                ElementsAre(QStringLiteral("/MultiChannelServer/DynamicMpxORVs")));
}

TEST_F(AccessByFileTest, SessionsOfOneUserShareAnMpxOrvAndThoseOfAnotherDoNot) {
    const VtPeer bob = Admitted("bob");
    const VtPeer bobAgain = Admitted("bob");
    const VtPeer carol = Admitted("carol");
    Use(bob, m_name);
    Use(bobAgain, m_name);
    Use(carol, m_name);
    EXPECT_EQ(ClientsOf(Dynamic(m_name)).size(), 2);
    EXPECT_EQ(Tune(bobAgain, m_name, 145e6), QString());
    EXPECT_EQ(WhyNotWrite(carol, Dynamic(m_name, QStringLiteral("Request/Frequency"))),
              m_name + QStringLiteral(" belongs to another user"));
}

TEST_F(AccessByFileTest, AStaticMpxOrvIsUsedByThoseWhoMayWriteThere) {
    const VtPeer dora = Admitted("dora");
    UseStatic(dora, QStringLiteral("Alpha"));
    UseStatic(Admitted("bob"), QStringLiteral("Alpha"));
    EXPECT_EQ(ClientsOf(Static(QStringLiteral("Alpha"))).size(), 1);
    EXPECT_EQ(WhyNotWrite(dora, Static(QStringLiteral("Alpha"), QStringLiteral("Request/Frequency"))),
              QString());
    EXPECT_EQ(WhyNotWrite(dora, Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayCal"))),
              QStringLiteral("only operators switch policies"))
        << "however much the file allows";
}

TEST_F(AccessByFileTest, NoFileLetsAnybodyWriteTheStatus) {
    EXPECT_EQ(WhyNotWrite(Admitted("alice"), QStringLiteral("/MultiChannelServer/Status/Online")),
              QStringLiteral("the status is the server's own"));
}

}  // namespace
