// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsclientatserver.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>

#include <tests/devicecontrol/multichannelserver/common/slots_itanium.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using slots::ConstOp;
using slots::ExpectOneAfterTheOther;
using slots::Op;
using slots::Slot;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

// The destructor takes the first two slots.
constexpr std::size_t SlotAfterDestructor = 2;

// clang-format off
TEST(VirtualOrder, OfTheObserverPattern) {
    EXPECT_EQ(Slot(&IObserver::Update), SlotAfterDestructor);
    ExpectOneAfterTheOther(SlotAfterDestructor, {
        {"AddObserver",       Slot(&Observable::AddObserver)},
        {"DeleteObserver",    Slot(&Observable::DeleteObserver)},
        {"DeleteObservers",   Slot(&Observable::DeleteObservers)},
        {"MakeFirstObserver", Slot(&Observable::MakeFirstObserver)},
        {"NotifyObservers",   Slot(&Observable::NotifyObservers)}});
}

TEST(VirtualOrder, OfThePolicySetAfterTheObservablesOperations) {
    using Set = MCSPolicySet;
    ExpectOneAfterTheOther(Slot(&Observable::NotifyObservers) + 1, {
        {"Add",                 Slot(&Set::Add)},
        {"Remove",              Slot(&Set::Remove)},
        {"AddAll",              Slot(&Set::AddAll)},
        {"RemoveAll",           Slot(&Set::RemoveAll)},
        {"SetContains",         Slot(&Set::SetContains)},
        {"Contains",            Slot<ConstOp<Set, bool, const MCSPolicy&>>(&Set::Contains)},
        {"begin",               Slot(&Set::begin)},
        {"end",                 Slot(&Set::end)},
        {"ReadFromCfg",         Slot<Op<Set, void, ICfg*>>(&Set::ReadFromCfg)},
        {"WriteToCfg",          Slot<ConstOp<Set, void, ICfg*>>(&Set::WriteToCfg)},
        {"ShowViewInTree",      Slot<Op<Set, void, values::Node*, bool>>(&Set::ShowViewInTree)},
        {"GetParentNodeInTree", Slot(&Set::GetParentNodeInTree)},
        {"ToString",            Slot(&Set::ToString)}});
}

TEST(VirtualOrder, OfTheStatusAfterUpdate) {
    using S = MCSStatus;
    using Selection = ConstOp<S, ValueSelection*>;
    using Number = ConstOp<S, ValueNumeric<int>*>;
    using Flag = ConstOp<S, Value<bool>*>;
    using String = ConstOp<S, Value<QString>*>;
    using Path = Op<S, QString>;
    using Integer = ConstOp<S, int>;
    using Boolean = ConstOp<S, bool>;
    ExpectOneAfterTheOther(Slot(&IObserver::Update) + 1, {
        {"GetBootState",                        Slot<Op<S, EBooState>>(&S::GetBootState)},
        {"GetBootStateAsString",                Slot<Op<S, QString>>(&S::GetBootStateAsString)},
        {"GetBootStateValue",                   Slot<Selection>(&S::GetBootStateValue)},
        {"GetBootState_ValuePath",              Slot<Path>(&S::GetBootState_ValuePath)},
        {"GetOperationMode",                    Slot<Op<S, EOperationMode>>(&S::GetOperationMode)},
        {"GetOperationModeAsString",            Slot<Op<S, QString>>(&S::GetOperationModeAsString)},
        {"GetOperationModeValue",               Slot<Selection>(&S::GetOperationModeValue)},
        {"GetOperationMode_ValuePath",          Slot<Path>(&S::GetOperationMode_ValuePath)},
        {"GetFreeFreqChannels",                 Slot<Integer>(&S::GetFreeFreqChannels)},
        {"GetFreeFreqChannelsValue",            Slot<Number>(&S::GetFreeFreqChannelsValue)},
        {"GetFreeFreqChannels_ValuePath",       Slot<Path>(&S::GetFreeFreqChannels_ValuePath)},
        {"GetUsedFreqChannels",                 Slot<Integer>(&S::GetUsedFreqChannels)},
        {"GetUsedFreqChannelsValue",            Slot<Number>(&S::GetUsedFreqChannelsValue)},
        {"GetUsedFreqChannels_ValuePath",       Slot<Path>(&S::GetUsedFreqChannels_ValuePath)},
        {"IsMcsMasterJobControlled",            Slot<Boolean>(&S::IsMcsMasterJobControlled)},
        {"GetMcsMasterJobControlledValue",      Slot<Flag>(&S::GetMcsMasterJobControlledValue)},
        {"GetMcsMasterJobControlled_ValuePath", Slot<Path>(&S::GetMcsMasterJobControlled_ValuePath)},
        {"GetSweepTime",                        Slot<Integer>(&S::GetSweepTime)},
        {"GetSweepTimeValue",                   Slot<Number>(&S::GetSweepTimeValue)},
        {"GetSweepTime_ValuePath",              Slot<Path>(&S::GetSweepTime_ValuePath)},
        {"IsOnline",                            Slot<Boolean>(&S::IsOnline)},
        {"GetOnlineValue",                      Slot<Flag>(&S::GetOnlineValue)},
        {"GetOnline_ValuePath",                 Slot<Path>(&S::GetOnline_ValuePath)},
        {"GetConnectionState",                  Slot<Op<S, QString>>(&S::GetConnectionState)},
        {"GetConnectionStateValue",             Slot<String>(&S::GetConnectionStateValue)},
        {"GetConnectionState_ValuePath",        Slot<Path>(&S::GetConnectionState_ValuePath)},
        {"GetStaticMpxORVs",                    Slot<Integer>(&S::GetStaticMpxORVs)},
        {"GetStaticMpxORVsValue",               Slot<Number>(&S::GetStaticMpxORVsValue)},
        {"GetStaticMpxORVs_ValuePath",          Slot<Path>(&S::GetStaticMpxORVs_ValuePath)},
        {"GetDynamicMpxORVs",                   Slot<Integer>(&S::GetDynamicMpxORVs)},
        {"GetDynamicMpxORVsValue",              Slot<Number>(&S::GetDynamicMpxORVsValue)},
        {"GetDynamicMpxORVs_ValuePath",         Slot<Path>(&S::GetDynamicMpxORVs_ValuePath)},
        {"GetLogMessage",                       Slot<Op<S, QString>>(&S::GetLogMessage)},
        {"GetLogMessageValue",                  Slot<String>(&S::GetLogMessageValue)},
        {"GetLogMessage_ValuePath",             Slot<Path>(&S::GetLogMessage_ValuePath)}});
}

TEST(VirtualOrder, OfTheStatusOfAMpxORVAfterUpdate) {
    using S = MCSMpxORVStatus;
    using Selection = ConstOp<S, ValueSelection*>;
    using Flag = ConstOp<S, Value<bool>*>;
    using String = ConstOp<S, Value<QString>*>;
    using Path = Op<S, QString>;
    ExpectOneAfterTheOther(Slot(&IObserver::Update) + 1, {
        {"SetOperationType",              Slot<ConstOp<S, void, const QString&>>(&S::SetOperationType)},
        {"GetOperationType",              Slot<Op<S, QString>>(&S::GetOperationType)},
        {"GetOperationTypeValue",         Slot<String>(&S::GetOperationTypeValue)},
        {"GetOperationType_ValuePath",    Slot<Path>(&S::GetOperationType_ValuePath)},
        {"GetConnectedClientsValue",      Slot<Selection>(&S::GetConnectedClientsValue)},
        {"GetConnectedClients_ValuePath", Slot<Path>(&S::GetConnectedClients_ValuePath)},
        {"AddConnectedClient",            Slot<Op<S, void, long, const QString&>>(&S::AddConnectedClient)},
        {"RemoveConnectedClient",         Slot<Op<S, void, long>>(&S::RemoveConnectedClient)},
        {"GetOperationMode",              Slot<Op<S, EOperationMode>>(&S::GetOperationMode)},
        {"GetOperationModeAsString",      Slot<Op<S, QString>>(&S::GetOperationModeAsString)},
        {"GetOperationModeValue",         Slot<Selection>(&S::GetOperationModeValue)},
        {"GetOperationMode_ValuePath",    Slot<Path>(&S::GetOperationMode_ValuePath)},
        {"IsMaster",                      Slot<ConstOp<S, bool>>(&S::IsMaster)},
        {"GetIsMasterValue",              Slot<Flag>(&S::GetIsMasterValue)},
        {"GetIsMaster_ValuePath",         Slot<Path>(&S::GetIsMaster_ValuePath)},
        {"IsWatchingMaster",              Slot<ConstOp<S, bool>>(&S::IsWatchingMaster)},
        {"GetIsWatchingMasterValue",      Slot<Flag>(&S::GetIsWatchingMasterValue)},
        {"GetIsWatchingMaster_ValuePath", Slot<Path>(&S::GetIsWatchingMaster_ValuePath)},
        {"SetComment",                    Slot<ConstOp<S, void, const QString&>>(&S::SetComment)},
        {"GetComment",                    Slot<Op<S, QString>>(&S::GetComment)},
        {"GetCommentValue",               Slot<String>(&S::GetCommentValue)},
        {"GetComment_ValuePath",          Slot<Path>(&S::GetComment_ValuePath)},
        {"GetName",                       Slot<Op<S, QString>>(&S::GetName)}});
}

TEST(VirtualOrder, OfTheServerClientAfterUpdate) {
    /// Shows what is meant for derived classes.
    struct C : MultiChannelServerClient {
        using MultiChannelServerClient::ConnectMpxORV;
    };
    using Segments = EMCSControlTreeSegments;
    using AskSegments = ConstOp<C, bool, Segments>;
    using ConnectTree = Op<C, bool, const QString&, Segments>;
    using ConnectHandle = Op<C, MpxORVHandle*, const QString&, const QString&, const QString&, bool>;
    ExpectOneAfterTheOther(Slot(&IObserver::Update) + 1, {
        {"ConnectToServer",                    Slot<Op<C, bool, const QString&, int>>(&C::ConnectToServer)},
        {"DisconnectFromServer",               Slot<Op<C, void>>(&C::DisconnectFromServer)},
        {"UseVtClient",                        Slot<Op<C, void, IVtClient*>>(&C::UseVtClient)},
        {"GetVtClientToUse",                   Slot<ConstOp<C, IVtClient*>>(&C::GetVtClientToUse)},
        {"IsConnectedToServer",                Slot<ConstOp<C, bool>>(&C::IsConnectedToServer)},
        {"ConnectToMCSControlTree",            Slot<ConnectTree>(&C::ConnectToMCSControlTree)},
        {"DisconnectFromMCSControlTree",       Slot<Op<C, void, bool>>(&C::DisconnectFromMCSControlTree)},
        {"IsMCSControlTreeConnected",          Slot<ConstOp<C, bool>>(&C::IsMCSControlTreeConnected)},
        {"AreMCSControlTreeSegmentsRequested", Slot<AskSegments>(&C::AreMCSControlTreeSegmentsRequested)},
        {"AreMCSControlTreeSegmentsConnected", Slot<AskSegments>(&C::AreMCSControlTreeSegmentsConnected)},
        {"GetLocalMCSBasePath",                Slot<Op<C, QString>>(&C::GetLocalMCSBasePath)},
        {"ConnectStaticMpxORV",                Slot<Op<C, MpxORVHandle*, QString, const QString&>>(&C::ConnectStaticMpxORV)},
        {"CreateAndConnectDynamicMpxORV",      Slot<Op<C, MpxORVHandle*, QString>>(&C::CreateAndConnectDynamicMpxORV)},
        {"DisconnectAllMpxORVs",               Slot<Op<C, void>>(&C::DisconnectAllMpxORVs)},
        {"SetUniqueMpxORVName",                Slot<Op<C, void, QString>>(&C::SetUniqueMpxORVName)},
        {"GetUniqueMpxORVName",                Slot<Op<C, QString>>(&C::GetUniqueMpxORVName)},
        {"ConnectMpxORV",                      Slot<ConnectHandle>(&C::ConnectMpxORV)}});
}

TEST(VirtualOrder, OfTheServersOwnClientIsThatOfItsBase) {
    struct Base : MultiChannelServerClient {
        using MultiChannelServerClient::ConnectMpxORV;
    };
    struct C : MCSClientAtServer {
        using MCSClientAtServer::ConnectMpxORV;
    };
    EXPECT_EQ(Slot(&C::CreateAndConnectDynamicMpxORV), Slot(&Base::CreateAndConnectDynamicMpxORV));
    EXPECT_EQ(Slot(&C::ConnectMpxORV), Slot(&Base::ConnectMpxORV));
    EXPECT_EQ(sizeof(MCSClientAtServer), sizeof(MultiChannelServerClient));
}

TEST(VirtualOrder, OfTheHandleAfterUpdate) {
    using H = MpxORVHandle;
    ExpectOneAfterTheOther(Slot(&IObserver::Update) + 1, {
        {"GetLocalControlPath",     Slot<Op<H, QString>>(&H::GetLocalControlPath)},
        {"GetControlNode",          Slot<ConstOp<H, values::Node*>>(&H::GetControlNode)},
        {"GetName",                 Slot<Op<H, QString>>(&H::GetName)},
        {"IsControlTreeConnected",  Slot<ConstOp<H, bool>>(&H::IsControlTreeConnected)},
        {"GetRemoteMpxORVBasePath", Slot<Op<H, QString>>(&H::GetRemoteMpxORVBasePath)},
        {"GetPolicySet",            Slot<Op<H, MCSPolicySet&>>(&H::GetPolicySet)}});
}
// clang-format on

/// Where the part Base of an object lies, in bytes.
template <class Base, class Object>
std::ptrdiff_t OffsetOf(Object& object) {
    return reinterpret_cast<char*>(static_cast<Base*>(&object)) - reinterpret_cast<char*>(&object);
}

TEST(VirtualOrder, TheFirstBaseOfAStatusIsTheObserverAndThatOfAPolicySetTheObservable) {
    const values::Tree tree;
    MCSStatus status(QStringLiteral("/Status"));
    MCSMpxORVStatus mpx(QStringLiteral("/Mpx/Status"));
    MCSPolicySet set;
    EXPECT_EQ(OffsetOf<IObserver>(status), 0);
    EXPECT_GT(OffsetOf<Observable>(status), 0);
    EXPECT_EQ(OffsetOf<IObserver>(mpx), 0);
    EXPECT_GT(OffsetOf<Observable>(mpx), 0);
    EXPECT_EQ(OffsetOf<Observable>(set), 0);
    EXPECT_GT(OffsetOf<IObserver>(set), 0);
}

TEST(VirtualOrder, TheFirstBaseOfAServerClientIsTheObserver) {
    MultiChannelServerClient client;
    EXPECT_EQ(OffsetOf<IObserver>(client), 0);
    EXPECT_EQ(OffsetOf<Observable>(client), static_cast<std::ptrdiff_t>(sizeof(IObserver)));
}

TEST(VirtualOrder, TheServerClientKeepsTheObservablesOperations) {
    using C = MultiChannelServerClient;
    EXPECT_TRUE((std::is_same_v<decltype(&C::NotifyObservers), decltype(&Observable::NotifyObservers)>));
    EXPECT_TRUE((std::is_same_v<decltype(&C::AddObserver), decltype(&Observable::AddObserver)>));
    EXPECT_TRUE((std::is_same_v<decltype(&C::DeleteObserver), decltype(&Observable::DeleteObserver)>));
}

TEST(VirtualOrder, TheStatusClassesKeepTheObservablesOperations) {
    using NotifyObservers = decltype(&Observable::NotifyObservers);
    using DeleteObserver = decltype(&Observable::DeleteObserver);
    EXPECT_TRUE((std::is_same_v<decltype(&MCSStatus::NotifyObservers), NotifyObservers>));
    EXPECT_TRUE((std::is_same_v<decltype(&MCSStatus::DeleteObserver), DeleteObserver>));
    EXPECT_TRUE((std::is_same_v<decltype(&MCSMpxORVStatus::NotifyObservers), NotifyObservers>));
    EXPECT_TRUE((std::is_same_v<decltype(&MCSMpxORVStatus::DeleteObserver), DeleteObserver>));
}

}  // namespace
