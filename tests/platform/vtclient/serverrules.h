// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/rawpeer.h>
#include <tests/platform/vtclient/twoends.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <gmock/gmock.h>

/// What the tests of a server share, in which a test plays the client message by message.
namespace serverrules {

using testing::ElementsAre;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;
using vt::EBye;
using vt::EResult;
using Text = Value<QString>;

inline QString S(const char* text) {
    return QString::fromUtf8(text);
}

inline vt::HelloMessage Hello(quint32 version = vtlimits::ProtocolVersion) {
    vt::HelloMessage hello;
    hello.version = version;
    hello.application = S("test");
    return hello;
}

inline vt::SubscribeMessage Subscribe(quint32 sub, const char* path) {
    vt::SubscribeMessage subscribe;
    subscribe.sub = sub;
    subscribe.path = S(path);
    return subscribe;
}

inline vt::SubscribeMessage Look(quint32 sub, const char* path) {
    vt::SubscribeMessage look = Subscribe(sub, path);
    look.look = true;
    return look;
}

inline vt::WriteMessage Write(quint32 req, quint32 sub, quint32 id, const vt::Content& content) {
    vt::WriteMessage write;
    write.req = req;
    write.sub = sub;
    write.id = id;
    write.content = content;
    return write;
}

inline vt::CreateMessage Create(quint32 req, quint32 sub, const char* path) {
    vt::CreateMessage create;
    create.req = req;
    create.sub = sub;
    create.path = S(path);
    return create;
}

inline vt::AckMessage Ack(quint64 count) {
    vt::AckMessage ack;
    ack.count = count;
    return ack;
}

class ServerRules : public TwoEnds {
  protected:
    /// A client that the test plays.
    RawPeer& Connect(const char* address = "memory") {
        auto wire = std::make_shared<MemoryChannel::Wire>();
        auto end = std::make_unique<MemoryChannel>(wire, false);
        end->SetAddress(S(address));
        m_serverEnds.push_back({end.get(), wire});
        m_hub->AddChannel(std::move(end));
        m_peers.push_back(std::make_unique<RawPeer>(wire, true));
        return *m_peers.back();
    }
    RawPeer& Admitted() {
        RawPeer& peer = Connect();
        peer.Send(Hello());
        Run();
        EXPECT_EQ(peer.Count<vt::WelcomeMessage>(), 1);
        return peer;
    }
    RawPeer& Subscribed(const char* path = "/S") {
        RawPeer& peer = Admitted();
        peer.Send(Subscribe(1, path));
        Run();
        EXPECT_EQ(peer.Count<vt::EndMessage>(), 1);
        return peer;
    }
    void Run() {
        for (int round = 0; round < 1000; ++round) {
            bool hasRun = m_serverLoop->Run();
            for (const auto& end : m_serverEnds)
                if (!end.second->isBGone) hasRun = end.first->Deliver() || hasRun;
            for (const auto& peer : m_peers)
                peer->Read();
            if (!hasRun) return;
        }
        FAIL() << "it never comes to rest";
    }
    void RunAfter(std::chrono::milliseconds time) {
        m_clock.Pass(time);
        Run();
    }
    void ExpectBye(const RawPeer& peer, EBye code, const char* reason) {
        ASSERT_EQ(peer.Count<vt::ByeMessage>(), 1);
        EXPECT_EQ(peer.Of<vt::ByeMessage>()[0].code, code);
        EXPECT_EQ(peer.Of<vt::ByeMessage>()[0].reason, S(reason));
        EXPECT_TRUE(peer.isClosed);
    }

    std::vector<std::pair<MemoryChannel*, std::shared_ptr<MemoryChannel::Wire>>> m_serverEnds;
    std::vector<std::unique_ptr<RawPeer>> m_peers;
};

}  // namespace serverrules
