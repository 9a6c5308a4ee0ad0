// SPDX-License-Identifier: Apache-2.0
// The server is killed and comes back: the application does nothing, and has everything again.
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <platform/vtclient/ivtclient.h>

#include <tests/apps/endtoend/application.h>

namespace {

using Codes = std::vector<TChangeCode>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// How the application has its MpxORV, and what it hears of a loss and a return.
struct Way {
    const char* name;
    EMCSControlTreeSegments segments;
    const char* localPath;  ///< empty: the segment mirrors it
    Codes loss;
    Codes comeback;  ///< 5019 first, the rest as it comes
};

void PrintTo(const Way& way, std::ostream* stream) {
    *stream << way.name;
}

class ServerLoss : public Application, public testing::WithParamInterface<Way> {
  protected:
    void ConnectAll();
    /// The values that an application could hold pointers to.
    std::vector<values::ValueBase*> Values() const;
    std::vector<int> States() const;

    std::unique_ptr<MCSStatus> status;
    MpxORVHandle* handle = nullptr;
    QString path;  ///< of the MpxORV
};

void ServerLoss::ConnectAll() {
    ASSERT_NO_FATAL_FAILURE(StartServer());
    ASSERT_NO_FATAL_FAILURE(Connect(GetParam().segments));
    status = std::make_unique<MCSStatus>(S("/Server/Status"));
    handle = client.CreateAndConnectDynamicMpxORV(S(GetParam().localPath));
    ASSERT_NE(handle, nullptr);
    path = handle->GetLocalControlPath();
    MCSPolicySet& policies = handle->GetPolicySet();
    ASSERT_TRUE(WaitUntil([&] { return policies.Contains(MCSPolicy::MAYBEJOBMASTER); }));
    ASSERT_TRUE(HasDynamicMpxOrvs(1));
    ASSERT_TRUE(WaitUntil([this] { return client.GetVtClientToUse()->AreAllTicsEstablished(); }));
    TakeCodes();
}

std::vector<values::ValueBase*> ServerLoss::Values() const {
    std::vector<values::ValueBase*> values;
    for (const QString& name :
         {S("/Server/Status/BootState"), S("/Server/Status/LogMessage"), path + S("/Status/OperationType"),
          path + S("/Policy/MayBIT"), path + S("/Request/Frequency"), path + S("/Request/Answer")})
        values.push_back(dynamic_cast<values::ValueBase*>(tree.FindItem(name)));
    return values;
}

std::vector<int> ServerLoss::States() const {
    std::vector<int> states;
    for (const values::ValueBase* value : Values())
        states.push_back(value != nullptr ? value->GetState() : values::GoingAway);
    return states;
}

TEST_P(ServerLoss, OfAServerThatComesBackIsUndoneByItself) {
    ASSERT_NO_FATAL_FAILURE(ConnectAll());
    const std::vector<values::ValueBase*> before = Values();
    EXPECT_THAT(before, testing::Each(testing::NotNull()));
    EXPECT_EQ(States(), std::vector<int>(before.size(), values::Valid));

    server.Kill();
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeDisconnected));
    EXPECT_EQ(TakeCodes(), GetParam().loss);
    EXPECT_EQ(Values(), before);
    EXPECT_EQ(States(), std::vector<int>(before.size(), values::Stale));

    ASSERT_NO_FATAL_FAILURE(server.Restart());
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    ASSERT_TRUE(HasDynamicMpxOrvs(1));
    EXPECT_EQ(observer.Codes().front(), serverclientcode::ConnectedToServer);
    EXPECT_THAT(TakeCodes(), testing::UnorderedElementsAreArray(GetParam().comeback));
    const std::vector<int> valid(before.size(), values::Valid);
    EXPECT_TRUE(WaitUntil([&] { return States() == valid; })) << testing::PrintToString(States());
    EXPECT_EQ(Values(), before);
    EXPECT_TRUE(handle->IsControlTreeConnected());

    Find<values::Value<bool>>(S("/Server/Command/ShallBeConnected"))->SetValue(true);
    ASSERT_TRUE(IsReady());
    EXPECT_EQ(Tune(path, 121.5e6), S("done: tuned to 121.5 MHz"));
    EXPECT_EQ(Press(path, "BuiltInTest"), S("refused: needs MayBIT"));
    EXPECT_EQ(status->GetUsedFreqChannels(), 1);
    delete handle;
    client.DisconnectFromServer();
    EXPECT_TRUE(HasDynamicMpxOrvs(0));
}

const Way Ways[] = {
    {"TicOfItsOwn", CommandSegment | StatusSegment, "/Mine", {5020, 5024, 5022}, {5019, 5023, 5025, 5021}},
    {"MirroredSegment",
     CommandSegment | StatusSegment | DynamicMpxORVsSegment,
     "",
     {5020, 5022},
     {5019, 5025, 5021}},
};

INSTANTIATE_TEST_SUITE_P(, ServerLoss, testing::ValuesIn(Ways),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
