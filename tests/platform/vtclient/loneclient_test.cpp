// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneclient.h>

namespace {

using values::Value;
using vt::ChangeWriter;
using vt::EItemKind;
using vt::EMessage;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// An integer 1 "n".
void OneNumber(ChangeWriter& writer) {
    Value<int> number(5);
    number.SetName(S("n"));
    writer.Added(1, 0, number, EItemKind::Int, 0);
}

TEST_F(LoneClient, WhatIsWithdrawnForAReasonIsNotEstablishedAnyMore) {
    IVtTic* const tic = AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    ASSERT_TRUE(tic->IsEstablished());
    vt::Message absent = For(1, EMessage::Absent);
    absent.reason = S("not any more");
    Say(absent);
    EXPECT_FALSE(tic->IsEstablished());
    auto* const number = Find<Value<int>>("/L/n");
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->GetState(), values::Stale);
    Said();
    number->SetValue(7);
    Settle();
    EXPECT_EQ(number->GetValue(), 5) << "an edit that cannot be sent is taken back";
    EXPECT_TRUE(Said(EMessage::Write).empty());
}

}  // namespace
