// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicy.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using treeaccess::Text;

struct NamedPolicy {
    const char* name;
    const MCSPolicy* policy;
};

void PrintTo(const NamedPolicy& row, std::ostream* stream) {
    *stream << row.name;
}

// In name order: capitals come before small letters, so "MayBIT" before "MayBeJobMaster".
const NamedPolicy policies[] = {
    {"IsSlaveToMasterJob", &MCSPolicy::ISSLAVETOMASTERJOB},
    {"MayAlterDeviceSettings", &MCSPolicy::MAYALTERDEVICESETTINGS},
    {"MayAlterFreqRanges", &MCSPolicy::MAYALTERFREQRANGES},
    {"MayAlterFreqSingle", &MCSPolicy::MAYALTERFREQSINGLE},
    {"MayBIT", &MCSPolicy::MAYBIT},
    {"MayBeJobMaster", &MCSPolicy::MAYBEJOBMASTER},
    {"MayCal", &MCSPolicy::MAYCAL},
    {"MayReadSingleFreqFromMasterRanges", &MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES},
    {"MayRestartJob", &MCSPolicy::MAYRESTARTJOB},
    {"SeesMasterJobRf", &MCSPolicy::SEESMASTERJOBRF},
};

// Looked up while static objects of this program are built.
const MCSPolicy* const foundAtStart = MCSPolicy::PolicyByName(Text("SeesMasterJobRf"));

class MCSPolicyConstant : public testing::TestWithParam<NamedPolicy> {};

TEST_P(MCSPolicyConstant, HasItsName) {
    EXPECT_EQ(GetParam().policy->GetName(), Text(GetParam().name));
}

TEST_P(MCSPolicyConstant, IsItselfWhatItsNameFinds) {
    EXPECT_EQ(MCSPolicy::PolicyByName(Text(GetParam().name)), GetParam().policy);
}

INSTANTIATE_TEST_SUITE_P(All, MCSPolicyConstant, testing::ValuesIn(policies),
                         testing::PrintToStringParamName());

TEST(MCSPolicy, TheRegistryHoldsTheTenConstantsInNameOrder) {
    ASSERT_EQ(MCSPolicy::s_NameMCSPolicyMap.size(), 10);
    int row = 0;
    for (auto entry = MCSPolicy::s_NameMCSPolicyMap.cbegin(); entry != MCSPolicy::s_NameMCSPolicyMap.cend();
         ++entry, ++row) {
        EXPECT_EQ(entry.key(), Text(policies[row].name));
        EXPECT_EQ(entry.value(), policies[row].policy);
    }
}

TEST(MCSPolicy, TheRegistryIsFilledBeforeOtherStaticObjectsUseIt) {
    EXPECT_EQ(foundAtStart, &MCSPolicy::SEESMASTERJOBRF);
}

TEST(MCSPolicy, OnlyExactNamesAreFound) {
    for (const char* name : {"", "Unknown", "maybit", "MAYBIT", "MayBIT ", " MayBIT", "MayBI", "MayBITs"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(MCSPolicy::PolicyByName(Text(name)), nullptr);
    }
    EXPECT_EQ(MCSPolicy::PolicyByName(QString()), nullptr);
}

TEST(MCSPolicy, LookingForAnUnknownNameDoesNotRegisterIt) {
    MCSPolicy::PolicyByName(Text("Unknown"));
    EXPECT_EQ(MCSPolicy::s_NameMCSPolicyMap.size(), 10);
}

TEST(MCSPolicy, MayBITComesBeforeMayBeJobMaster) {
    EXPECT_TRUE(MCSPolicy::MAYBIT < MCSPolicy::MAYBEJOBMASTER);
    EXPECT_FALSE(MCSPolicy::MAYBEJOBMASTER < MCSPolicy::MAYBIT);
}

TEST(MCSPolicy, PoliciesCompareByName) {
    for (std::size_t a = 0; a < std::size(policies); ++a) {
        for (std::size_t b = 0; b < std::size(policies); ++b) {
            SCOPED_TRACE(std::string(policies[a].name) + " and " + policies[b].name);
            EXPECT_EQ(*policies[a].policy < *policies[b].policy, a < b);
            EXPECT_EQ(*policies[a].policy == *policies[b].policy, a == b);
            EXPECT_EQ(*policies[a].policy != *policies[b].policy, a != b);
        }
    }
}

TEST(MCSPolicy, CopiesAreEqualButNotRegistered) {
    MCSPolicy copy(MCSPolicy::MAYCAL);
    const MCSPolicy moved(std::move(copy));
    EXPECT_EQ(moved.GetName(), Text("MayCal"));
    EXPECT_TRUE(moved == MCSPolicy::MAYCAL);
    EXPECT_EQ(MCSPolicy::PolicyByName(Text("MayCal")), &MCSPolicy::MAYCAL);
    EXPECT_EQ(MCSPolicy::s_NameMCSPolicyMap.size(), 10);
}

TEST(MCSPolicy, TheRegistryOutlivesCopies) {
    { const MCSPolicy copy(MCSPolicy::MAYCAL); }
    EXPECT_EQ(MCSPolicy::PolicyByName(Text("MayCal")), &MCSPolicy::MAYCAL);
}

TEST(MCSPolicy, AssignmentTakesTheNameAndRegistersNothing) {
    MCSPolicy copy(MCSPolicy::MAYCAL);
    copy = MCSPolicy::MAYBIT;
    EXPECT_TRUE(copy == MCSPolicy::MAYBIT);
    EXPECT_EQ(MCSPolicy::PolicyByName(Text("MayBIT")), &MCSPolicy::MAYBIT);
}

TEST(MCSPolicy, NobodyElseMakesAPolicyFromAName) {
    EXPECT_FALSE((std::is_constructible_v<MCSPolicy, QString>));
    EXPECT_FALSE(std::is_default_constructible_v<MCSPolicy>);
}

}  // namespace
