// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/memoryroads.h>
#include <tests/platform/vtclient/treesequal.h>
#include <tests/platform/vtclient/twoends.h>

/// Two ends whose sessions have a bus beside them.
class RoadEnds : public TwoEnds {
  protected:
    RoadEnds() {
        m_settings.roads = &m_serverBus;
        m_hub.reset();
        StartServer();
    }
    ~RoadEnds() override {
        m_ends.clear();
        m_hub.reset();
    }

    /// A client that mirrors /S at /L and the number of the client, and its end of the bus.
    struct Rider {
        End* end;
        MemoryBus::End* bus;
        QString root;
        IVtTic* tic;
    };
    Rider AddRider(bool hasRoads = true) {
        m_buses.push_back(std::make_unique<MemoryBus::End>(m_bus));
        End& end = AddClient();
        end.connector->roads = hasRoads ? m_buses.back().get() : nullptr;
        const QString root = QStringLiteral("/L%1").arg(m_buses.size());
        return {&end, m_buses.back().get(), root, end.client->AddTic(root + QStringLiteral(",/S"), "")};
    }
    /// Until whoever listens has heard its road, and takes it.
    void Ride() {
        for (int i = 0; i < 8; ++i)
            Pass(std::chrono::milliseconds(250));
    }
    bool StepMore() override {
        bool hasRun = false;
        for (const auto& bus : m_buses)
            hasRun = bus->Deliver() || hasRun;
        return hasRun;
    }
    /// Every pass is short enough that nobody misses a mark.
    void PassSlowly(std::chrono::milliseconds time) {
        for (auto left = time; left.count() > 0; left -= std::chrono::milliseconds(250))
            Pass(std::chrono::milliseconds(250));
    }
    template <class V>
    V* At(const QString& root, const char* name) {
        return dynamic_cast<V*>(m_tree.FindItem(root + QLatin1Char('/') + QString::fromUtf8(name)));
    }
    /// Bytes that wait for the client in its session.
    static int InSession(const Rider& rider) {
        int bytes = 0;
        for (const QByteArray& message : rider.end->connector->wire->toA)
            bytes += message.size();
        return bytes;
    }
    testing::AssertionResult IsEqual(const Rider& rider) {
        return AreEqual(m_tree.FindItem(QStringLiteral("/S")), m_tree.FindItem(rider.root), rider.root);
    }

    MemoryBus m_bus;
    MemoryBus::End m_serverBus{m_bus};
    std::vector<std::unique_ptr<MemoryBus::End>> m_buses;
};
