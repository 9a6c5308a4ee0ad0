// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/vtclient.h>
#include <platform/vtclient/server/serverhub.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/platform/vtclient/treefixture.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

/// A server and clients back to back in memory, over one tree: the server's subtree is at /S, clients mirror
/// it where they like.
class TwoEnds : public TreeFixture {
  protected:
    /// Makes wires to the hub.
    class Connector final : public vt::IConnector {
      public:
        explicit Connector(TwoEnds& ends) : m_ends(ends) {}
        void SetListener(IListener* listener) override { m_listener = listener; }
        void Connect() override {
            ++attempts;
            isConnecting = true;
        }
        void Abort() override { isConnecting = false; }
        bool Run() {
            if (!isConnecting) return false;
            if (m_ends.m_isUnreachable) {
                isConnecting = false;
                m_listener->OnConnectFailed(QStringLiteral("unreachable"));
                return true;
            }
            if (!m_ends.m_hub) return false;
            isConnecting = false;
            wire = std::make_shared<MemoryChannel::Wire>();
            auto mine = std::make_unique<MemoryChannel>(wire, true);
            mine->SetRoads(roads);
            auto theirs = std::make_unique<MemoryChannel>(wire, false);
            clientEnd = mine.get();
            serverEnd = theirs.get();
            m_ends.m_hub->AddChannel(std::move(theirs));
            m_listener->OnConnected(std::move(mine));
            return true;
        }

        vt::IRoads* roads = nullptr;  ///< that come with the wires
        int attempts = 0;
        bool isConnecting = false;
        std::shared_ptr<MemoryChannel::Wire> wire;
        MemoryChannel* clientEnd = nullptr;
        MemoryChannel* serverEnd = nullptr;

      private:
        TwoEnds& m_ends;
        IListener* m_listener = nullptr;
    };

    struct End {
        RecordingObserver observer;
        std::unique_ptr<vt::VtClient> client;
        Connector* connector = nullptr;
        ManualLoop* loop = nullptr;
        bool isReading = true;
    };

    TwoEnds() { StartServer(); }
    ~TwoEnds() override {
        m_ends.clear();
        m_hub.reset();
    }

    void StartServer() {
        m_serverLoop = std::make_unique<ManualLoop>(m_clock);
        m_hub = std::make_unique<vt::ServerHub>(m_access, *m_serverLoop, m_settings);
    }
    /// As kill -9 would: no farewell.
    void KillServer() {
        for (auto& end : m_ends)
            if (end->connector->wire) {
                end->connector->wire->isOpen = false;
                end->connector->wire->toA.clear();
            }
        m_hub.reset();
        for (auto& end : m_ends)
            if (end->connector->wire) end->connector->wire->toA.clear();
    }

    End& AddClient(const VtClientOptions& options = VtClientOptions()) {
        auto end = std::make_unique<End>();
        auto connector = std::make_unique<Connector>(*this);
        auto loop = std::make_unique<ManualLoop>(m_clock);
        end->connector = connector.get();
        end->loop = loop.get();
        end->client = std::make_unique<vt::VtClient>(QStringLiteral("server"), 7450, options,
                                                     std::move(connector), std::move(loop));
        end->client->AddObserver(&end->observer);
        m_ends.push_back(std::move(end));
        return *m_ends.back();
    }

    /// Lets everything happen that is due, until nothing is.
    void Settle() {
        for (int round = 0; round < 10000; ++round)
            if (!Step()) return;
        FAIL() << "it never comes to rest";
    }
    bool Step() {
        bool hasRun = m_serverLoop && m_hub && m_serverLoop->Run();
        for (std::size_t i = 0; i < m_ends.size(); ++i) {
            End& end = *m_ends[i];
            if (!end.client) continue;
            hasRun = end.loop->Run() || hasRun;
            hasRun = end.connector->Run() || hasRun;
            const bool isWired = end.connector->wire != nullptr;
            if (isWired && m_hub && m_hub->CountSessions() != 0 && IsAlive(end.connector->wire, false))
                hasRun = end.connector->serverEnd->Deliver() || hasRun;
            if (isWired && end.isReading && IsAlive(end.connector->wire, true))
                hasRun = end.connector->clientEnd->Deliver() || hasRun;
        }
        return StepMore() || hasRun;
    }
    /// What else there is.
    virtual bool StepMore() { return false; }
    /// A channel object may have been destroyed by its owner; the wire tells.
    static bool IsAlive(const std::shared_ptr<MemoryChannel::Wire>& wire, bool isA) {
        return isA ? !wire->isAGone : !wire->isBGone;
    }
    void Pass(std::chrono::milliseconds time) {
        m_clock.Pass(time);
        Settle();
    }

    ManualClock m_clock;
    TestAccess m_access;
    bool m_isUnreachable = false;
    std::unique_ptr<ManualLoop> m_serverLoop;
    vt::ServerHub::Settings m_settings;
    std::unique_ptr<vt::ServerHub> m_hub;
    std::vector<std::unique_ptr<End>> m_ends;
};
