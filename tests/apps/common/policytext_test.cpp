// SPDX-License-Identifier: Apache-2.0
#include <apps/common/codedtext.h>
#include <apps/common/policytext.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

QString PT(const char* text) {
    return QString::fromUtf8(text);
}

TEST(PolicyText, WhatIsNoPolicyStaysAsItIs) {
    EXPECT_EQ(policytext::Caption(PT("MayFly")), PT("MayFly"));
}

struct SentenceRow {
    const char* name;
    CodedText text;
    const char* english;
    const char* shown;
};
class PolicySentence : public testing::TestWithParam<SentenceRow> {};

TEST_P(PolicySentence, CallsPoliciesAsTheBoxesDo) {
    EXPECT_EQ(GetParam().text.ToEnglish(), PT(GetParam().english)) << "the server's words stay";
    EXPECT_EQ(GetParam().text.Translated(), PT(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(
    All, PolicySentence,
    testing::Values(SentenceRow{"Needed", CodedText(ECode::NeedsPolicy, {PT("MayCal"), CodedText()}),
                                "needs MayCal", "needs \"May calibrate\""},
                    SentenceRow{"Lost", CodedText(ECode::RightTaken, {PT("MayBIT, MayCal"), CodedText()}),
                                "the right MayBIT, MayCal",
                                "the right \"May run built-in tests\", \"May calibrate\""},
                    SentenceRow{"Given",
                                CodedText(ECode::PolicyGiven, {PT("MayCal"), PT("MayBIT"), CodedText()}),
                                "MayBIT of MayCal is switched from off to on",
                                "\"May run built-in tests\" of MayCal is switched from off to on"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
