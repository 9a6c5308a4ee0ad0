// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

/// The client that was written from the protocol's page alone, for the program mcserver.
class PythonClient : public ProgramRunner {
  public:
    explicit PythonClient(const ServerProcess& server) : m_server(server) {}

    void Start(std::initializer_list<const char*> words) {
        QStringList arguments{QStringLiteral(INTEROP_CLIENT), QStringLiteral("127.0.0.1"),
                              QString::number(m_server.Port())};
        for (const char* word : words)
            arguments += QString::fromUtf8(word);
        StartProgram(QStringLiteral(INTEROP_PYTHON), arguments);
    }
    int Run(std::initializer_list<const char*> words) {
        Start(words);
        return WaitForEnd();
    }
    using ProgramRunner::errors;
    using ProgramRunner::output;
    using ProgramRunner::WaitForEnd;
    using ProgramRunner::WaitUntil;

  private:
    const ServerProcess& m_server;
};

class InteropWithMcserver : public testing::Test {
  protected:
    /// Its device is there, and not connected yet.
    void SetUp() override {
        server.WriteFile(QStringLiteral("mcserver.ini"),
                         "[General]\nConnectOnStartup=false\n[StaticMpxORVs]\nNames=Tower\n");
        ASSERT_NO_FATAL_FAILURE(server.Start());
    }

    ServerProcess server;
    PythonClient client{server};
};

TEST_F(InteropWithMcserver, TheTreeIsListed) {
    EXPECT_EQ(client.Run({"list", "/MultiChannelServer"}), 0) << client.errors.constData();
    for (const char* line :
         {"/MultiChannelServer node\n", "/MultiChannelServer/Config/NumberOfFreqChannels limited-integer 4\n",
          "/MultiChannelServer/Status/BootState selection Unknown\n",
          "/MultiChannelServer/Status/ConnectionState text not connected\n",
          "/MultiChannelServer/Status/StaticMpxORVs limited-integer 1\n",
          "/MultiChannelServer/Command/ShallBeConnected boolean false\n",
          "/MultiChannelServer/StaticMpxORVs/Tower/Policy/MayBIT boolean false\n",
          "/MultiChannelServer/StaticMpxORVs/Tower/Request/Frequency number "})
        EXPECT_THAT(client.output.toStdString(), HasSubstr(line));
}

TEST_F(InteropWithMcserver, TheDeviceIsSeenBootingForWhoeverConnectsIt) {
    client.Start({"watch", "/MultiChannelServer/Status/BootState", "5"});
    ASSERT_TRUE(client.WaitUntil([this] { return client.output.contains("watching\n"); }))
        << client.errors.constData();
    PythonClient other(server);
    EXPECT_EQ(other.Run({"write", "/MultiChannelServer/Command/ShallBeConnected", "true"}), 0)
        << other.errors.constData();
    EXPECT_EQ(other.output, QByteArray("done\n"));
    EXPECT_EQ(client.WaitForEnd(), 0) << client.errors.constData();
    EXPECT_EQ(client.output.toStdString(),
              "watching\n"
              "/MultiChannelServer/Status/BootState selection Power On\n"
              "/MultiChannelServer/Status/BootState selection Loading\n"
              "/MultiChannelServer/Status/BootState selection Self Test\n"
              "/MultiChannelServer/Status/BootState selection Calibrating\n"
              "/MultiChannelServer/Status/BootState selection Ready\n");
}

struct Refusal {
    const char* name;
    std::initializer_list<const char*> words;
    const char* reason;
};

void PrintTo(const Refusal& refusal, std::ostream* stream) {
    *stream << refusal.name;
}

class InteropRefusals : public InteropWithMcserver, public testing::WithParamInterface<Refusal> {};

TEST_P(InteropRefusals, SayWhy) {
    EXPECT_EQ(client.Run(GetParam().words), 1);
    EXPECT_EQ(client.errors.toStdString(), std::string(GetParam().reason) + "\n");
    EXPECT_EQ(client.output, QByteArray());
}

const Refusal Refusals[] = {
    {"OfTheStatus", {"write", "/MultiChannelServer/Status/SweepTime", "5"}, "the status is the server's own"},
    {"OfAnAnswer",
     {"write", "/MultiChannelServer/StaticMpxORVs/Tower/Request/Answer", "x"},
     "only the server writes this"},
    {"OfWhatIsNotThere", {"list", "/MultiChannelServer/Nothing"}, "not found"},
    {"OfAnMpxOrvThatNobodyMakes",
     {"list", "/MultiChannelServer/StaticMpxORVs/Van"},
     "there is no static MpxORV 'Van'"},
    {"OfACreation",
     {"create", "/MultiChannelServer/Config", "/MultiChannelServer/Config/Mine", "text", "x"},
     "what is below /MultiChannelServer is the server's own"},
};

INSTANTIATE_TEST_SUITE_P(, InteropRefusals, testing::ValuesIn(Refusals),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
