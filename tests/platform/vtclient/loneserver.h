// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/codecprobe.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <functional>

/// A server whose client is the test: it says what it likes, and sees what the server says.
class LoneServer : public testing::Test {
  protected:
    /// The test's end of a connection, once the server has welcomed it.
    struct Peer {
        std::shared_ptr<MemoryChannel::Wire> wire = std::make_shared<MemoryChannel::Wire>();
        MemoryChannel* channel = nullptr;
    };

    Peer Connect() {
        Peer peer;
        auto channel = std::make_unique<MemoryChannel>(peer.wire, false);
        peer.channel = channel.get();
        m_hub->AddChannel(std::move(channel));
        vt::HelloMessage hello;
        hello.version = vtlimits::ProtocolVersion;
        Say(peer, hello);
        return peer;
    }
    void Say(Peer& peer, const vt::Message& message) {
        peer.wire->toB.push_back(ToBytes(message));
        Settle(peer);
    }
    void Settle(Peer& peer) {
        bool hasRun = true;
        for (int round = 0; hasRun; ++round) {
            ASSERT_LT(round, 1000) << "it never comes to rest";
            hasRun = m_loop.Run();
            if (!peer.wire->isBGone) hasRun = peer.channel->Deliver() || hasRun;
        }
    }
    /// What the server has said since this was asked last, each message read whole.
    static std::vector<DecodedMessage> Said(Peer& peer) {
        std::vector<DecodedMessage> said;
        for (const QByteArray& bytes : peer.wire->toA) {
            EXPECT_LE(bytes.size(), static_cast<int>(vtlimits::MaxFrame)) << "a client could not take it";
            said.push_back(Decode(bytes));
            EXPECT_EQ(said.back().error, QString()) << "a client could not read it";
        }
        peer.wire->toA.clear();
        return said;
    }
    /// All changes that the server has said since.
    static std::vector<vt::TreeChange> SaidChanges(Peer& peer) {
        std::vector<vt::TreeChange> changes;
        for (const DecodedMessage& said : Said(peer))
            changes.insert(changes.end(), said.changes.begin(), said.changes.end());
        return changes;
    }
    void Subscribe(Peer& peer, quint32 sub, const char* path) {
        vt::SubscribeMessage subscribe;
        subscribe.sub = sub;
        subscribe.path = QString::fromUtf8(path);
        Say(peer, subscribe);
    }
    void Acknowledge(Peer& peer, quint64 count) {
        vt::AckMessage ack;
        ack.count = count;
        Say(peer, ack);
    }

    template <class V>
    V* Add(const char* parent, const QString& name) {
        auto* const value = new V();
        value->SetName(name);
        EXPECT_TRUE(m_tree.AddValue(QString::fromUtf8(parent), value));
        return value;
    }

    values::Tree m_tree;
    ManualClock m_clock;
    ManualLoop m_loop{m_clock};
    TestAccess m_access;
    vt::ServerHub::Settings m_settings;
    std::unique_ptr<vt::ServerHub> m_hub = std::make_unique<vt::ServerHub>(m_access, m_loop, m_settings);
};
