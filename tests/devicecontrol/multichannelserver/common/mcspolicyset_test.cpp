// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using treeaccess::Text;
using NotifyingSet = Notifying<MCSPolicySet>;
using Notifications = std::vector<NotifyingSet::Notification>;

const std::vector<QString> allNames = {Text("IsSlaveToMasterJob"),
                                       Text("MayAlterDeviceSettings"),
                                       Text("MayAlterFreqRanges"),
                                       Text("MayAlterFreqSingle"),
                                       Text("MayBIT"),
                                       Text("MayBeJobMaster"),
                                       Text("MayCal"),
                                       Text("MayReadSingleFreqFromMasterRanges"),
                                       Text("MayRestartJob"),
                                       Text("SeesMasterJobRf")};

std::vector<QString> NamesOf(const MCSPolicySet& set) {
    std::vector<QString> names;
    for (const MCSPolicy& policy : set)
        names.push_back(policy.GetName());
    return names;
}

/// Notes which of its operations were called, and with what.
class LoggingSet final : public MCSPolicySet {
  public:
    void Add(const MCSPolicy& policy) override {
        log.push_back(Text("Add ") + policy.GetName());
        MCSPolicySet::Add(policy);
    }
    void Remove(const MCSPolicy& policy) override {
        log.push_back(Text("Remove ") + policy.GetName());
        MCSPolicySet::Remove(policy);
    }
    void SetContains(const MCSPolicy& policy, bool contains) override {
        log.push_back(Text("SetContains ") + policy.GetName());
        MCSPolicySet::SetContains(policy, contains);
    }

    std::vector<QString> log;
};

std::vector<QString> Prefixed(const char* prefix, const std::vector<QString>& names) {
    std::vector<QString> lines;
    for (const QString& name : names)
        lines.push_back(Text(prefix) + name);
    return lines;
}

TEST(MCSPolicySet, IsEmptyAndHiddenAtFirst) {
    const MCSPolicySet set;
    EXPECT_EQ(set.ToString(), Text("<none>"));
    EXPECT_TRUE(set.begin() == set.end());
    EXPECT_EQ(set.GetParentNodeInTree(), nullptr);
    EXPECT_FALSE(set.Contains(MCSPolicy::MAYCAL));
}

TEST(MCSPolicySet, AddTellsOfANewPolicyToEveryObserver) {
    NotifyingSet set;
    RecordingObserver observer;
    set.AddObserver(&observer);
    set.Add(MCSPolicy::MAYCAL);
    EXPECT_TRUE(set.Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(set.Notifications(), (Notifications{{5, nullptr}}));
    EXPECT_EQ(observer.Events(), (std::vector<RecordingObserver::Event>{{&set, 5}}));
}

TEST(MCSPolicySet, AddOfAContainedPolicyNotifiesNobody) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Clear();
    set.Add(MCSPolicy::MAYCAL);
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST(MCSPolicySet, RemoveTellsOfAPolicyThatWent) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Clear();
    set.Remove(MCSPolicy::MAYCAL);
    EXPECT_FALSE(set.Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(set.Notifications(), (Notifications{{6, nullptr}}));
}

TEST(MCSPolicySet, RemoveOfAnAbsentPolicyNotifiesNobody) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Clear();
    set.Remove(MCSPolicy::MAYCAL);
    EXPECT_EQ(set.Notifications(), Notifications{});
    EXPECT_EQ(set.ToString(), Text("MayBIT"));
}

TEST(MCSPolicySet, APolicyOfTheSetItselfCanBeRemoved) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Add(MCSPolicy::MAYBIT);
    set.Remove(*set.begin());
    EXPECT_EQ(set.ToString(), Text("MayCal"));
}

TEST(MCSPolicySet, SetContainsAddsAndRemoves) {
    LoggingSet set;
    set.SetContains(MCSPolicy::MAYCAL, true);
    EXPECT_TRUE(set.Contains(MCSPolicy::MAYCAL));
    set.SetContains(MCSPolicy::MAYCAL, false);
    EXPECT_FALSE(set.Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(set.log, (std::vector<QString>{Text("SetContains MayCal"), Text("Add MayCal"),
                                             Text("SetContains MayCal"), Text("Remove MayCal")}));
}

TEST(MCSPolicySet, AddAllAddsEveryPolicyInNameOrder) {
    LoggingSet set;
    set.AddAll();
    EXPECT_EQ(set.log, Prefixed("Add ", allNames));
    EXPECT_EQ(NamesOf(set), allNames);
}

TEST(MCSPolicySet, AddAllTellsOnlyOfThoseThatWereMissing) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Clear();
    set.AddAll();
    EXPECT_EQ(set.Notifications(), Notifications(9, {5, nullptr}));
}

TEST(MCSPolicySet, RemoveAllRemovesOneAfterTheOtherInNameOrder) {
    LoggingSet set;
    RecordingObserver observer;
    set.AddAll();
    set.log.clear();
    set.AddObserver(&observer);
    set.RemoveAll();
    EXPECT_EQ(set.log, Prefixed("Remove ", allNames));
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>(10, 6));
    EXPECT_TRUE(set.begin() == set.end());
}

TEST(MCSPolicySet, TheDefaultIsFivePoliciesAddedInTheirOwnOrder) {
    LoggingSet set;
    set.SetToDefaultPolicy();
    EXPECT_EQ(set.log,
              (std::vector<QString>{Text("Add MayAlterFreqSingle"),
                                    Text("Add MayReadSingleFreqFromMasterRanges"), Text("Add MayBeJobMaster"),
                                    Text("Add MayRestartJob"), Text("Add MayAlterFreqRanges")}));
}

TEST(MCSPolicySet, TheDefaultAsTextIsInNameOrder) {
    MCSPolicySet set;
    set.SetToDefaultPolicy();
    EXPECT_EQ(set.ToString(), Text("MayAlterFreqRanges, MayAlterFreqSingle, MayBeJobMaster, "
                                   "MayReadSingleFreqFromMasterRanges, MayRestartJob"));
}

TEST(MCSPolicySet, TheDefaultOnAFullSetTellsOfEachRemovedThenOfEachAdded) {
    NotifyingSet set;
    set.AddAll();
    set.Clear();
    set.SetToDefaultPolicy();
    Notifications expected(10, {6, nullptr});
    expected.insert(expected.end(), 5, {5, nullptr});
    EXPECT_EQ(set.Notifications(), expected);
}

TEST(MCSPolicySet, OnePolicyAsTextIsItsName) {
    MCSPolicySet set;
    set.Add(MCSPolicy::MAYBIT);
    EXPECT_EQ(set.ToString(), Text("MayBIT"));
}

TEST(MCSPolicySet, ReadingAsksForEveryPolicyWithItsStateAsTheFallback) {
    FakeCfg cfg;
    MCSPolicySet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Add(MCSPolicy::SEESMASTERJOBRF);
    set.ReadFromCfg(&cfg);
    std::vector<QString> expected = Prefixed("ReadBool ", allNames);
    for (QString& line : expected)
        line += line.endsWith(Text("MayBIT")) || line.endsWith(Text("SeesMasterJobRf")) ? Text(" true")
                                                                                        : Text(" false");
    EXPECT_EQ(cfg.Log(), expected);
}

TEST(MCSPolicySet, ReadingKeepsTheStateOfMissingKeys) {
    FakeCfg cfg;
    NotifyingSet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Clear();
    set.ReadFromCfg(&cfg);
    EXPECT_EQ(set.ToString(), Text("MayBIT"));
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST(MCSPolicySet, ReadingTakesWhatTheStoreHolds) {
    FakeCfg cfg;
    cfg.Put(Text("MayBIT"), Text("false"));
    cfg.Put(Text("MayCal"), Text("true"));
    NotifyingSet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Clear();
    set.ReadFromCfg(&cfg);
    EXPECT_EQ(set.ToString(), Text("MayCal"));
    EXPECT_EQ(set.Notifications(), (Notifications{{6, nullptr}, {5, nullptr}}));
}

TEST(MCSPolicySet, ReadingAddsAndRemovesThroughTheOverriddenOperations) {
    FakeCfg cfg;
    cfg.Put(Text("MayCal"), Text("true"));
    LoggingSet set;
    set.ReadFromCfg(&cfg);
    std::vector<QString> expected = Prefixed("Remove ", allNames);
    expected[6] = Text("Add MayCal");
    EXPECT_EQ(set.log, expected);
}

TEST(MCSPolicySet, WritingWritesAllTenAndDoesNotCommit) {
    FakeCfg cfg;
    MCSPolicySet set;
    set.Add(MCSPolicy::MAYCAL);
    set.WriteToCfg(&cfg);
    std::vector<QString> expected = Prefixed("WriteBool ", allNames);
    for (QString& line : expected)
        line += line.endsWith(Text("MayCal")) ? Text(" true") : Text(" false");
    EXPECT_EQ(cfg.Log(), expected);
}

TEST(MCSPolicySet, WithoutAStoreNothingIsReadOrWritten) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Clear();
    set.ReadFromCfg(nullptr);
    set.WriteToCfg(nullptr);
    EXPECT_EQ(set.ToString(), Text("MayCal"));
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST(MCSPolicySet, WhatWasWrittenIsReadBack) {
    FakeCfg cfg;
    MCSPolicySet written;
    written.SetToDefaultPolicy();
    written.WriteToCfg(&cfg);
    MCSPolicySet read;
    read.AddAll();
    read.ReadFromCfg(&cfg);
    EXPECT_EQ(NamesOf(read), NamesOf(written));
}

TEST(MCSPolicySet, ACopyHasThePoliciesAndNoObservers) {
    MCSPolicySet set;
    RecordingObserver observer;
    set.AddObserver(&observer);
    set.Add(MCSPolicy::MAYCAL);
    MCSPolicySet copy(set);
    EXPECT_EQ(copy.ToString(), Text("MayCal"));
    copy.Add(MCSPolicy::MAYBIT);
    EXPECT_EQ(observer.Count(5), 1);
    EXPECT_FALSE(set.Contains(MCSPolicy::MAYBIT));
}

TEST(MCSPolicySet, AssignmentReplacesThePoliciesAndTellsNobody) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.Clear();
    MCSPolicySet other;
    other.Add(MCSPolicy::MAYBIT);
    static_cast<MCSPolicySet&>(set) = other;
    EXPECT_EQ(set.ToString(), Text("MayBIT"));
    EXPECT_EQ(set.Notifications(), Notifications{});
    set.Add(MCSPolicy::MAYCAL);
    EXPECT_EQ(set.Notifications(), (Notifications{{5, nullptr}}));  // its observers stayed
}

}  // namespace
