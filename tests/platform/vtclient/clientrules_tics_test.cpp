// SPDX-License-Identifier: Apache-2.0
// What a client tells its tics, and which ones there may be.
#include <tests/platform/vtclient/clientrules.h>

namespace {

using namespace clientrules;
using testing::IsEmpty;

TEST_F(ClientRules, AnAbsentItemTakesItsMirrorAlong) {
    Establish();
    EXPECT_FALSE(m_tic->IsAbsent());
    Say(About<vt::AbsentMessage>());
    EXPECT_EQ(m_tree.FindItem(S("/L")), nullptr);
    EXPECT_FALSE(m_tic->IsEstablished());
    EXPECT_TRUE(m_tic->IsAbsent());
    EXPECT_THAT(m_observer.Codes(), ElementsAre(15));
    EXPECT_TRUE(m_client->IsConnected());
}

TEST_F(ClientRules, WhatIsAbsentOrDeniedIsToldToItsTicAlone) {
    for (const char* reason : {"", "not for you"}) {
        Start(VtClientOptions());
        m_observer.Clear();
        m_tic = m_client->AddTic(S("/L,/S"), "");
        RecordingObserver tic;
        m_tic->AddObserver(&tic);
        Connect();
        Welcome();
        m_sub = m_server->Of<vt::SubscribeMessage>().at(0).sub;
        vt::AbsentMessage absent = About<vt::AbsentMessage>();
        absent.reason = S(reason);
        Say(absent);
        EXPECT_TRUE(m_tic->IsAbsent());
        EXPECT_THAT(tic.Codes(), ElementsAre(15));
        EXPECT_THAT(m_observer.Codes(), ElementsAre(16));
        m_wire->isOpen = false;
        Run();
        EXPECT_FALSE(m_tic->IsAbsent());
        m_tic->DeleteObserver(&tic);
    }
}

TEST_F(ClientRules, ATicLooksIfItIsAddedSo) {
    Start(VtClientOptions());
    EXPECT_NE(m_client->AddTic(S("/L/a,/S/a"), ticoption::Look), nullptr);
    EXPECT_NE(m_client->AddTic(S("/L/b,/S/b"), ""), nullptr);
    EXPECT_NE(m_client->AddTic(S("/L/c,/S/c"), nullptr), nullptr);
    EXPECT_NE(m_client->AddTic(S("/L/b,/S/b"), ticoption::Look), nullptr) << "who uses may look";
    EXPECT_EQ(m_client->AddTic(S("/L/a,/S/a"), ""), nullptr) << "what is looked at is not used";
    EXPECT_EQ(m_client->AddTic(S("/L/d,/S/d"), "peek"), nullptr);
    Connect();
    Welcome();
    std::map<QString, bool> looks;
    for (const vt::SubscribeMessage& subscribe : m_server->Of<vt::SubscribeMessage>())
        looks[subscribe.path] = subscribe.look;
    EXPECT_EQ(looks, (std::map<QString, bool>{{S("/S/a"), true}, {S("/S/b"), false}, {S("/S/c"), false}}));
}

TEST_F(ClientRules, TheTicMayBeRemovedFromWhereverItIsToldOf) {
    Establish();
    m_observer.React([this](Observable*, TChangeCode) {
        if (m_tic != nullptr) m_client->RemoveTic(m_tic);
        m_tic = nullptr;
    });
    Say(About<vt::AbsentMessage>());
    Run();
    EXPECT_TRUE(m_client->AreAllTicsEstablished());
    m_observer.React({});
}

TEST_F(ClientRules, AnObserverOfAMirroredValueMayRemoveTheTic) {
    Establish();
    RecordingObserver value([this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_client->RemoveTic(m_tic);
    });
    T()->AddObserver(&value);
    Batch(3, {Changed(1, S("two")), Changed(1, S("three")), AddedText(2, 0, "u", "")});
    EXPECT_EQ(T()->GetValue(), S("two"));
    EXPECT_EQ(T()->GetState(), values::Stale);
    EXPECT_EQ(m_tree.FindItem(S("/L/u")), nullptr);
    EXPECT_TRUE(m_client->IsConnected());
    EXPECT_EQ(m_server->Count<vt::UnsubscribeMessage>(), 1);
    T()->DeleteObserver(&value);
}

TEST_F(ClientRules, ATicWhoseNodeIsReleasedIsToldOfItInTheNextTurn) {
    Establish();
    RecordingObserver tic;
    m_tic->AddObserver(&tic);
    m_client->ReleaseNode(m_tree.FindNode(S("/L")));
    EXPECT_FALSE(m_tic->IsEstablished());
    EXPECT_THAT(tic.Codes(), IsEmpty());
    EXPECT_THAT(m_observer.Codes(), IsEmpty());
    Run();
    EXPECT_THAT(tic.Codes(), ElementsAre(15));
    EXPECT_THAT(m_observer.Codes(), ElementsAre(15));
    EXPECT_EQ(T()->GetState(), values::Stale);
    m_tic->DeleteObserver(&tic);
}

TEST_F(ClientRules, ATicRemovedAfterItsNodeWasReleasedTellsOnlyThatItGoes) {
    Establish();
    RecordingObserver tic;
    m_tic->AddObserver(&tic);
    m_client->ReleaseNode(m_tree.FindNode(S("/L")));
    m_client->RemoveTic(m_tic);
    Run();
    EXPECT_THAT(tic.Codes(), ElementsAre(18));
    EXPECT_THAT(m_observer.Codes(), IsEmpty());
    EXPECT_EQ(m_server->Count<vt::UnsubscribeMessage>(), 1);
}

struct SpecRow {
    const char* name;
    const char* spec;
    bool isGood;
};

class TicSpecs : public ClientRules, public testing::WithParamInterface<SpecRow> {};

TEST_P(TicSpecs, AreTwoAbsolutePathsThatMeetNoOtherMirror) {
    ASSERT_NE(m_client->AddTic(S("/L/a,/S/a"), ""), nullptr);
    EXPECT_EQ(m_client->AddTic(S(GetParam().spec), "") != nullptr, GetParam().isGood);
}

INSTANTIATE_TEST_SUITE_P(
    All, TicSpecs,
    testing::Values(SpecRow{"Beside", "/L/b,/S/b", true}, SpecRow{"TheSameAgain", "/L/a,/S/a", true},
                    SpecRow{"TheSameOtherwiseWritten", "//L//a/,/S/a/", true},
                    SpecRow{"TwiceTheRemote", "/L/b,/S/a", true}, SpecRow{"Around", "/L,/S", false},
                    SpecRow{"Within", "/L/a/x,/S/x", false}, SpecRow{"AtTheSamePlace", "/L/a,/S/b", false},
                    SpecRow{"NameThatBeginsAlike", "/L/ab,/S/ab", true}, SpecRow{"Empty", "", false},
                    SpecRow{"OnePath", "/L", false}, SpecRow{"RelativeLocal", "L,/S", false},
                    SpecRow{"RelativeRemote", "/L/c,S", false}, SpecRow{"WithABlank", "/L/c, /S", false}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
