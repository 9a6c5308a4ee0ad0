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

TEST_F(LoneClient, WhatIsMadeWithoutAConnectionIsNotUnderWay) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    m_wire->isOpen = false;
    Settle();
    m_observer.Clear();
    ASSERT_NE(m_tree.ProvideNode(S("/L/own")), nullptr);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    Welcome();
    ShowSubtree(1, OneNumber);
    EXPECT_TRUE(m_client->HasUnansweredWrites());
    const auto created = Said(EMessage::Create);
    ASSERT_EQ(created.size(), 1U);
    EXPECT_EQ(created.front().path, S("/S/own"));
    Answer(created.front().req, vt::EResult::Done);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

}  // namespace
