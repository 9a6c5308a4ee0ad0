// SPDX-License-Identifier: Apache-2.0
// What users notice of nodes of NATS that are killed and frozen while changes, occurrences and writes go on.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/apps/nats/faultreport.h>
#include <tests/apps/nats/faultstage.h>
#include <tests/platform/nats/natscluster.h>
#include <tests/support/waituntil.h>

#include <platform/nats/natsscheme.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QFile>

using namespace std::chrono_literals;

namespace {

class NodeFaults : public testing::Test {
  protected:
    void Start(const QByteArray& configuration = QByteArray(WithDisk)) {
        ASSERT_TRUE(m_cluster.Start(configuration));
        if (!configuration.isEmpty()) {
            ASSERT_TRUE(m_cluster.WaitUntilTheyKeep());
        }
        ASSERT_TRUE(m_stage.StartServer(m_cluster.Options(0)));
        for (int client = 0; client < 6; ++client)
            ASSERT_TRUE(m_stage.AddClient(m_cluster.Address(QStringLiteral("tower"), client)));
        ASSERT_TRUE(m_stage.WaitForRoads(*OpenBus(m_cluster.Options(0))));
    }

    /// Kills one after the other, and lets each come back.
    void KillInTurn(int kills, const char* what) {
        std::vector<FaultStage::Time> pauses;
        for (int kill = 0; kill < kills; ++kill) {
            m_stage.TakePauses();
            m_cluster.Kill(kill);
            m_stage.Run(500ms);
            ASSERT_TRUE(m_cluster.StartNode(kill));
            m_stage.Run(700ms);
            for (const auto pause : m_stage.TakePauses())
                pauses.push_back(pause);
            ASSERT_TRUE(m_stage.IsInOrder(true)) << "kill " << kill;
        }
        Report(what, m_stage, pauses);
    }

    NatsCluster m_cluster;
    FaultStage m_stage;
};

TEST_F(NodeFaults, OneOfThreeKilledInTurnLosesAndRepeatsNothing) {
    ASSERT_NO_FATAL_FAILURE(Start());
    KillInTurn(Kills(), "one node of three killed and back");
}

TEST_F(NodeFaults, WithoutAnybodyWhoKeepsAnythingTheSameHolds) {
    ASSERT_NO_FATAL_FAILURE(Start(""));
    KillInTurn(IsLong() ? 6 : 1, "the same without JetStream");
}

TEST_F(NodeFaults, AllKilledAndBack) {
    ASSERT_NO_FATAL_FAILURE(Start());
    for (int node = 0; node < NatsCluster::Nodes; ++node)
        m_cluster.Kill(node);
    m_stage.Run(500ms);
    for (int node = 0; node < NatsCluster::Nodes; ++node)
        ASSERT_TRUE(m_cluster.StartNode(node));
    ASSERT_TRUE(m_stage.RunUntil([this] { return m_stage.IsOffering() && m_stage.AreAllEstablished(); }));
    m_stage.Run(1s);
    EXPECT_TRUE(m_stage.IsInOrder(m_stage.CountLosses() == 0));
    Report("all three killed and back", m_stage, m_stage.TakePauses());
}

TEST_F(NodeFaults, AFrozenNodeIsLeftForAnother) {
    ASSERT_NO_FATAL_FAILURE(Start());
    m_cluster.Freeze(1, true);
    m_stage.Run(6s);
    m_cluster.Freeze(1, false);
    m_stage.Run(1s);
    EXPECT_TRUE(m_stage.IsInOrder(true));
    Report("a node frozen for 6 s, taken for lost after 4", m_stage, m_stage.TakePauses());
}

// The program itself
// -----------------------------------------------------------------------------------------

/// KiB that a process has of the memory there is.
int ResidentMemory(qint64 process) {
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').front().toInt();
    return 0;
}

TEST(NodeFaultsOfTheProgram, LeaveItsMemoryAsItWas) {
    constexpr int Warm = 3;
    constexpr int Growth = 4096;  // KiB: fragments of the heap, no more of them with more kills
    NatsCluster cluster;
    ASSERT_TRUE(cluster.Start(WithDisk));
    ASSERT_TRUE(cluster.WaitUntilTheyKeep());
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--nats"), cluster.Hosts(0), QStringLiteral("--station"),
                      QStringLiteral("tower"), QStringLiteral("--insecure")}));
    values::Tree tree;
    nats::RegisterScheme();
    std::vector<IVtClient*> clients;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(VtClientCenter::Instance().CreateVtClient(
            cluster.Address(QStringLiteral("tower"), i).toLatin1().constData(), 4222));
        ASSERT_NE(clients.back(), nullptr);
        clients.back()->AddTic(QStringLiteral("/L%1,/MultiChannelServer").arg(i), "");
    }
    const auto areAllThere = [&clients] {
        return std::all_of(clients.begin(), clients.end(),
                           [](const IVtClient* client) { return client->AreAllTicsEstablished(); });
    };
    int before = 0;
    for (int kill = 0; kill < Warm + Kills(); ++kill) {
        EXPECT_TRUE(WaitUntil(areAllThere, 30'000)) << kill;
        if (kill == Warm) before = ResidentMemory(server.ProcessId());
        cluster.Kill(kill);
        ASSERT_TRUE(cluster.StartNode(kill));
    }
    EXPECT_TRUE(WaitUntil(areAllThere, 30'000));
    const int after = ResidentMemory(server.ProcessId());
    std::printf("mcserver's memory: %d KiB before, %d KiB after %d kills\n", before, after, Kills());
    EXPECT_GT(before, 0);
    EXPECT_LT(after, before + Growth);
    for (IVtClient* const client : clients)
        VtClientCenter::Instance().DestroyVtClient(client);
}

}  // namespace
