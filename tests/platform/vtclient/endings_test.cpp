// SPDX-License-Identifier: Apache-2.0
// What ends a session, and with which code; and what does not.
#include <tests/platform/vtclient/serverrules.h>

#include <functional>

namespace {

using namespace serverrules;

struct Ending {
    const char* name;
    EBye code;
    std::function<void(RawPeer&)> happen;
};

void PrintTo(const Ending& ending, std::ostream* stream) {
    *stream << ending.name;
}

/// What an admitted client does that subscribes "/S" as 1.
class Endings : public ServerRules, public testing::WithParamInterface<Ending> {};

TEST_P(Endings, HaveTheirCode) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    RawPeer& other = Subscribed();
    GetParam().happen(peer);
    Run();
    ASSERT_EQ(peer.Count<vt::ByeMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::ByeMessage>()[0].code, GetParam().code);
    EXPECT_FALSE(peer.Of<vt::ByeMessage>()[0].reason.isEmpty());
    EXPECT_TRUE(peer.isClosed);
    EXPECT_EQ(other.Count<vt::ByeMessage>(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, Endings,
    testing::Values(
        Ending{"WhatCannotBeRead", EBye::Malformed, [](RawPeer& peer) { peer.SendBytes(QByteArray("?")); }},
        Ending{"WhatOnlyAServerSends", EBye::Malformed,
               [](RawPeer& peer) { peer.Send(vt::AbsentMessage()); }},
        Ending{"ASecondHello", EBye::Malformed, [](RawPeer& peer) { peer.Send(Hello()); }},
        Ending{"ANumberInUse", EBye::Malformed, [](RawPeer& peer) { peer.Send(Subscribe(1, "/S/t")); }},
        Ending{"ANumberOutOfRange", EBye::Malformed, [](RawPeer& peer) { peer.Send(Subscribe(0, "/S/t")); }},
        Ending{"ARelativePath", EBye::Malformed, [](RawPeer& peer) { peer.Send(Subscribe(2, "S/t")); }},
        Ending{"AnAckOfWhatWasNotSent", EBye::Malformed, [](RawPeer& peer) { peer.Send(Ack(100)); }},
        Ending{"TooManySubscriptions", EBye::Limit,
               [](RawPeer& peer) {
                   for (quint32 sub = 2; sub < vtlimits::MaxSubscriptions + 2; ++sub)
                       peer.Send(Subscribe(sub, "/S/t"));
               }}),
    [](const auto& row) { return std::string(row.param.name); });

/// What such a client does that is no reason to end.
class NoEndings : public Endings {};

TEST_P(NoEndings, AreAnsweredOrCountForNothing) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    GetParam().happen(peer);
    peer.Send(vt::PingMessage{7});
    Run();
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
    EXPECT_EQ(peer.Count<vt::PongMessage>(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, NoEndings,
    testing::Values(
        Ending{"AWriteToAnIdThatNeverWas", {}, [](RawPeer& peer) { peer.Send(Write(1, 1, 77, true)); }},
        Ending{"AWriteUnderANumberThatNeverWas", {}, [](RawPeer& peer) { peer.Send(Write(1, 9, 1, true)); }},
        Ending{"AWriteOfAnotherType", {}, [](RawPeer& peer) { peer.Send(Write(1, 1, 1, true)); }},
        Ending{"ACreationElsewhere", {}, [](RawPeer& peer) { peer.Send(Create(1, 1, "/elsewhere")); }},
        Ending{"TheEndOfASubscriptionThatNeverWas",
               {},
               [](RawPeer& peer) { peer.Send(vt::UnsubscribeMessage{9}); }},
        Ending{"AnAckAfterTheEndOfItsSubscription",
               {},
               [](RawPeer& peer) {
                   peer.Send(vt::UnsubscribeMessage{1});
                   peer.Send(Ack(2));
               }},
        Ending{"APongThatNobodyAskedFor", {}, [](RawPeer& peer) { peer.Send(vt::PongMessage{1}); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServerRules, TheNumberOfASubscriptionThatHasEndedTellsNothingMore) {
    Text* const text = Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    peer.Send(vt::UnsubscribeMessage{1});
    Run();
    text->SetValue(S("later"));
    Run();
    EXPECT_EQ(peer.Count<vt::BatchMessage>(), 0);
}

}  // namespace
