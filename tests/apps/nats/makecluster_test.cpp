// SPDX-License-Identifier: Apache-2.0
// What deploy/nats/make-cluster writes, with real nodes: what each of its users may do, and that it is
// enough.
#include <apps/mcdemo/democluster.h>
#include <platform/nats/natsaddress.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natskeeper.h>
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>

namespace {

using namespace std::chrono_literals;
using nats::INatsBus;

constexpr int ClusterPatience = 30'000;  // ms: the nodes elect a leader first

/// Somebody's connection to the cluster, and what NATS refuses.
class UserOfTheCluster final : private INatsBus::IListener {
  public:
    UserOfTheCluster(const DemoCluster& cluster, const QString& user) {
        const QProcessEnvironment environment = cluster.EnvironmentOf(user);
        nats::NatsAddress address;
        EXPECT_EQ(address.Parse(cluster.Hosts(), 4222), QString());
        nats::NatsOptions options;
        options.servers = address.servers;
        options.user = user;
        options.password = environment.value(QStringLiteral("MCS_NATS_PASSWORD"));
        options.caFile = environment.value(QStringLiteral("MCS_NATS_CA"));
        options.isTls = true;
        QString problem;
        bus = nats::MakeBus(options, &problem);
        bus->AddListener(this);
        bus->Open(true);
        EXPECT_TRUE(WaitUntil([this] { return bus->State() == INatsBus::EState::Open; }))
            << bus->Problem().toStdString();
        m_inbox = "_INBOX." + user.toLatin1() + ".test";
    }
    ~UserOfTheCluster() override { bus->RemoveListener(this); }
    UserOfTheCluster(const UserOfTheCluster&) = delete;
    UserOfTheCluster& operator=(const UserOfTheCluster&) = delete;

    void Publish(const char* subject) const { bus->Publish(subject, "x"); }
    void Hear(const char* subject) const {
        bus->Subscribe(subject, [](const nats::NatsMessage&) {});
    }
    /// Whether what was done since is refused, or not, as it \a isToBe.
    bool IsRefused(bool isToBe) {
        AskForARefusal();
        if (isToBe) return WaitUntil([this] { return m_complaints >= 2; });
        AskForARefusal();
        return m_complaints != 2;
    }

    std::shared_ptr<INatsBus> bus;

  private:
    void OnNatsState(INatsBus::EState, const QString&) override {}
    void OnNatsComplaint(const QString& complaint) override {
        ++m_complaints;
        if (!m_marker.isEmpty() && complaint.contains(QLatin1String(m_marker))) m_marker.clear();
    }
    /// Does what is surely refused, behind all else that is. The library tells of each refusal, but perhaps
    /// by the words of a later one.
    void AskForARefusal() {
        bool hasCome = false;
        const int echo = bus->Subscribe(m_inbox, [&hasCome](const nats::NatsMessage&) { hasCome = true; });
        bus->Publish(m_inbox, "");
        EXPECT_TRUE(WaitUntil([&hasCome] { return hasCome; }));
        bus->Unsubscribe(echo);
        m_marker = "marker" + QByteArray::number(++m_markers);
        bus->Publish(m_marker, "");
        EXPECT_TRUE(WaitUntil([this] { return m_marker.isEmpty(); }));
    }

    QByteArray m_inbox;
    int m_complaints = 0;
    int m_markers = 0;
    QByteArray m_marker;  ///< that was not refused yet
};

class MadeCluster : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        s_folder = new QTemporaryDir;
        s_cluster = new DemoCluster;
        QString error;
        const bool isThere = s_cluster->Start(
            QStringLiteral(MAKE_CLUSTER), QDir(s_folder->path()).filePath(QStringLiteral("cluster")), &error);
        EXPECT_TRUE(isThere) << error.toStdString();
    }
    static void TearDownTestSuite() {
        s_cluster->Stop();
        delete std::exchange(s_cluster, nullptr);
        delete std::exchange(s_folder, nullptr);
    }
    static QString Station() { return DemoCluster::Station(); }

    static DemoCluster* s_cluster;
    static QTemporaryDir* s_folder;
};

DemoCluster* MadeCluster::s_cluster = nullptr;
QTemporaryDir* MadeCluster::s_folder = nullptr;

struct Right {
    const char* name;
    const char* user;
    bool isToHear;  ///< else to publish
    const char* subject;
    bool isAllowed;
};

class Rights : public MadeCluster, public testing::WithParamInterface<Right> {};

TEST_P(Rights, AreWhatIsNeededAndNoMore) {
    const Right& right = GetParam();
    UserOfTheCluster user(*s_cluster, QLatin1String(right.user));
    if (right.isToHear)
        user.Hear(right.subject);
    else
        user.Publish(right.subject);
    EXPECT_EQ(user.IsRefused(!right.isAllowed), !right.isAllowed);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Rights,
    testing::Values(
        Right{"AStationThatSpeaksToClients", "demo", false, "mcs.demo.down.operator.x", true},
        Right{"AStationOnItsRoads", "demo", false, "mcs.demo.road.x.1", true},
        Right{"AStationThatShowsItself", "demo", false, "mcs.demo.here", true},
        Right{"AStationInAnothersName", "demo", false, "mcs.mast.here", false},
        Right{"AStationToAnothersClients", "demo", false, "mcs.mast.down.operator.x", false},
        Right{"AStationAsAClient", "demo", false, "mcs.demo.up.operator.x", false},
        Right{"AStationThatReadsAnothersSessions", "demo", true, "mcs.mast.up.>", false},
        Right{"AStationThatReadsAll", "demo", true, ">", false},
        Right{"AStationThatAnswersInAnothersPlace", "demo", false, "_INBOX.operator.x", false},
        Right{"AStationWithTheStreamsOfOthers", "demo", false, "$JS.API.STREAM.CREATE.mcs-roads-mast", false},
        Right{"AStationThatDeletesStreams", "demo", false, "$JS.API.STREAM.DELETE.mcs-roads-demo", false},
        Right{"AStationThatEmptiesStreams", "demo", false, "$JS.API.STREAM.PURGE.mcs-roads-demo", false},
        Right{"AStationThatListsStreams", "demo", false, "$JS.API.STREAM.LIST", false},
        Right{"AClientInItsSession", "operator", false, "mcs.demo.up.operator.x", true},
        Right{"AClientThatLooksForStations", "operator", false, "mcs._all.ask", true},
        Right{"AClientThatFetchesWhatItMissed", "operator", false,
              "$JS.API.DIRECT.GET.mcs-roads-demo.mcs.demo.road.x.1", true},
        Right{"AClientThatHearsRoads", "operator", true, "mcs.demo.road.x.*", true},
        Right{"AClientInAnothersSession", "viewer", false, "mcs.demo.up.operator.x", false},
        Right{"AClientThatReadsAnothersSession", "viewer", true, "mcs.demo.down.operator.>", false},
        Right{"AClientOnARoad", "operator", false, "mcs.demo.road.x.1", false},
        Right{"AClientThatSpeaksForAServer", "operator", false, "mcs.demo.down.viewer.x", false},
        Right{"AClientThatPosesAsAStation", "operator", false, "mcs.demo.here", false},
        Right{"AClientThatClaimsAStation", "operator", false, "mcs.demo.claim", false},
        Right{"AClientThatMakesStreams", "operator", false, "$JS.API.STREAM.CREATE.mcs-roads-demo", false},
        Right{"AClientThatDeletesStreams", "operator", false, "$JS.API.STREAM.DELETE.mcs-roads-demo", false}),
    [](const auto& row) { return std::string(row.param.name); });

// All that a server and a client do, with no more than these rights.
TEST_F(MadeCluster, IsEnoughForAServerAndAClient) {
    ServerProcess server;
    const auto environmentOf = [](const QString& user) {
        for (const char* const name : {"MCS_NATS_USER", "MCS_NATS_PASSWORD", "MCS_NATS_CA", "MCS_NATS_TLS"})
            qputenv(name, s_cluster->EnvironmentOf(user).value(QLatin1String(name)).toUtf8());
    };
    environmentOf(Station());
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--nats"), s_cluster->Hosts(), QStringLiteral("--station"), Station(),
                      QStringLiteral("--insecure")}));
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return server.Output().contains(QLatin1String("offered at NATS as the station demo"));
    })) << server.Output().toStdString();
    environmentOf(QStringLiteral("operator"));
    const ProgramOutcome outcome = ProgramRunner::Run(
        QStringLiteral(MCTREE_PROGRAM),
        {QStringLiteral("--connect"), QStringLiteral("natss://%1/%2").arg(s_cluster->Hosts(), Station()),
         QStringLiteral("get"), QStringLiteral("/MultiChannelServer/Config/NumberOfFreqChannels")});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
    for (const char* const name : {"MCS_NATS_USER", "MCS_NATS_PASSWORD", "MCS_NATS_CA", "MCS_NATS_TLS"})
        qunsetenv(name);
    // What a server publishes on a road is kept, and a client finds it there.
    UserOfTheCluster station(*s_cluster, Station());
    UserOfTheCluster client(*s_cluster, QStringLiteral("operator"));
    nats::NatsKeeper keeper(client.bus, "mcs-roads-demo");
    bool isFound = false;
    EXPECT_TRUE(WaitUntil(
        [&] {
            bool isAnswered = false;
            station.bus->Publish("mcs.demo.road.x.1", "kept");
            station.bus->Flush();
            keeper.Get("mcs.demo.road.x.1", [&](const std::optional<QByteArray>& data) {
                isAnswered = true;
                isFound = data == QByteArray("kept");
            });
            WaitUntil([&isAnswered] { return isAnswered; });
            return isFound;
        },
        ClusterPatience));
    EXPECT_THAT(server.Output().toStdString(), testing::Not(testing::HasSubstr("NATS refuses")));
    EXPECT_THAT(server.Errors().toStdString(), testing::Not(testing::HasSubstr("NATS refuses")));
}

}  // namespace
