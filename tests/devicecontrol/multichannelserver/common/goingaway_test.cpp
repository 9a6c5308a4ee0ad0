// SPDX-License-Identifier: Apache-2.0
// A value that goes away is detached from once, when it says so, and never touched again.
#include <tests/devicecontrol/multichannelserver/common/anydataobject.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

namespace {

using anydataobject::MakeCommands;
using anydataobject::MakeConfigData;
using anydataobject::MakeMpxORVStatus;
using anydataobject::MakeStatus;
using anydataobject::Object;
using treeaccess::Text;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

const QString basePath = anydataobject::BasePath();

int detachments = 0;  // from the value under test

/// A value that counts who detaches, while it says goodbye too.
template <class V>
class Watched final : public V {
  public:
    Watched() = default;
    ~Watched() override { this->SayGoodbye(); }
    void DeleteObserver(IObserver* observer) override {
        ++detachments;
        V::DeleteObserver(observer);
    }
};

using Make = Object (*)();
using Put = values::ValueBase* (*)(const char*);

Object MakePolicySet() {
    auto set = std::make_shared<MCSPolicySet>();
    set->ShowViewInTree(values::Tree::Instance()->FindNode(basePath), false);
    return set;
}

template <class V>
values::ValueBase* PutWatched(const char* key) {
    return treeaccess::PutValue<Watched<V>>(basePath, key);
}

struct WatchedRow {
    const char* object;
    Make make;
    const char* key;
    Put put;
};

void PrintTo(const WatchedRow& row, std::ostream* stream) {
    *stream << row.object << '_' << row.key;
}

constexpr Put text = PutWatched<Value<QString>>;
constexpr Put flag = PutWatched<Value<bool>>;
constexpr Put integer = PutWatched<Value<int>>;
constexpr Put count = PutWatched<ValueNumeric<int>>;
constexpr Put number = PutWatched<ValueNumeric<double>>;
constexpr Put choice = PutWatched<ValueSelection>;

// clang-format off
const WatchedRow rows[] = {
    {"ConfigData", MakeConfigData, "DeviceAddress", text},
    {"ConfigData", MakeConfigData, "DeviceName", text},
    {"ConfigData", MakeConfigData, "ConnectOnStartup", flag},
    {"ConfigData", MakeConfigData, "ForceConnect", flag},
    {"ConfigData", MakeConfigData, "NumberOfFreqChannels", count},
    {"ConfigData", MakeConfigData, "MaxProtocolLevel", integer},
    {"ConfigData", MakeConfigData, "SaveConfig", flag},
    {"ConfigData", MakeConfigData, "DefaultFrequencyForChannel", number},
    {"ConfigData", MakeConfigData, "DefaultScanAveragingTimeIndex", choice},
    {"Commands", MakeCommands, "ShallBeConnected", flag},
    {"Status", MakeStatus, "BootState", choice},
    {"Status", MakeStatus, "OperationMode", choice},
    {"Status", MakeStatus, "FreeFreqChannels", count},
    {"Status", MakeStatus, "UsedFreqChannels", count},
    {"Status", MakeStatus, "McsMasterJobControlled", flag},
    {"Status", MakeStatus, "SweepTime", count},
    {"Status", MakeStatus, "Online", flag},
    {"Status", MakeStatus, "ConnectionState", text},
    {"Status", MakeStatus, "StaticMpxORVs", count},
    {"Status", MakeStatus, "DynamicMpxORVs", count},
    {"Status", MakeStatus, "LogMessage", text},
    {"MpxORVStatus", MakeMpxORVStatus, "OperationType", text},
    {"MpxORVStatus", MakeMpxORVStatus, "ConnectedClients", choice},
    {"MpxORVStatus", MakeMpxORVStatus, "OperationMode", choice},
    {"MpxORVStatus", MakeMpxORVStatus, "IsMaster", flag},
    {"MpxORVStatus", MakeMpxORVStatus, "IsWatchingMaster", flag},
    {"MpxORVStatus", MakeMpxORVStatus, "Comment", text},
    {"PolicySet", MakePolicySet, "MayCal", flag},
};
// clang-format on

class AValueThatGoesAway : public testing::TestWithParam<WatchedRow> {
  protected:
    values::Tree m_tree;
    values::ValueBase* m_value = GetParam().put(GetParam().key);
    Object m_object = GetParam().make();
};

TEST_P(AValueThatGoesAway, IsDetachedFromAtOnceAndNotAgainByTheDestructor) {
    ASSERT_EQ(m_value->CountObservers(), 1);
    detachments = 0;
    // Told after the object, while the value is still there.
    RecordingObserver observer([this](Observable* /*source*/, TChangeCode /*code*/) {
        EXPECT_EQ(detachments, 1);
        m_object.reset();
        EXPECT_EQ(detachments, 1);
    });
    m_value->AddObserver(&observer);
    m_tree.Delete(m_value);
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{2});
}

TEST_P(AValueThatGoesAway, IsDetachedFromOnceByTheDestructorIfItStays) {
    m_value->SetState(values::Stale);
    ASSERT_EQ(m_value->CountObservers(), 1);
    detachments = 0;
    m_object.reset();
    EXPECT_EQ(detachments, 1);
    EXPECT_EQ(m_value->CountObservers(), 0);
}

INSTANTIATE_TEST_SUITE_P(Table, AValueThatGoesAway, testing::ValuesIn(rows),
                         testing::PrintToStringParamName());

}  // namespace
