// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/iroads.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <vector>

/// A bus in memory: what is published at one of its ends comes to all that listen. Nothing moves by itself,
/// and on its way each end's copy can be lost, repeated, delayed and overtaken.
class MemoryBus {
  public:
    class End;

    struct Published {
        QString road;
        QByteArray message;
    };

    bool hasKeeper = false;
    bool isKeeperSilent = false;       ///< who asks it hears nothing
    bool isFull = false;               ///< it takes nothing
    std::vector<Published> published;  ///< all of it, whoever did it
    std::set<quint64> notKept;         ///< numbers that the keeper has lost

    void Publish(const QString& road, const QByteArray& message);
    std::size_t CountOn(const QString& road) const {
        return static_cast<std::size_t>(std::count_if(published.begin(), published.end(),
                                                      [&](const auto& one) { return one.road == road; }));
    }

  private:
    std::vector<End*> m_ends;
};

/// One process's end of the bus.
class MemoryBus::End final : public vt::IRoads {
  public:
    explicit End(MemoryBus& bus) : m_bus(bus) { m_bus.m_ends.push_back(this); }
    ~End() override { m_bus.m_ends.erase(std::find(m_bus.m_ends.begin(), m_bus.m_ends.end(), this)); }
    End(const End&) = delete;
    End& operator=(const End&) = delete;

    QString Station() const override { return station; }
    bool Publish(const QString& road, std::string_view message) override {
        if (m_bus.isFull || static_cast<int>(message.size()) > maxMessage) return false;
        m_bus.Publish(road, QByteArray(message.data(), static_cast<int>(message.size())));
        return true;
    }
    void Listen(const QString& road, IListener* listener) override { m_listeners[listener] = road; }
    void Unlisten(IListener* listener) override {
        m_listeners.erase(listener);
        m_fetches.erase(listener);
        const auto isIts = [listener](const Coming& coming) { return coming.listener == listener; };
        m_coming.erase(std::remove_if(m_coming.begin(), m_coming.end(), isIts), m_coming.end());
    }
    bool Fetch(IListener* listener, quint64 from, quint64 to) override {
        ++fetches;
        if (m_bus.hasKeeper && !m_bus.isKeeperSilent) m_fetches[listener] = {from, to};
        return m_bus.hasKeeper;
    }

    int MaxMessage() const override { return maxMessage; }
    void Flush() override { onFlush(); }

    /// What becomes of a copy that has come to this end: how often it is given to the listener, 0 for a loss.
    std::function<int(const QByteArray& message)> fate = [](const QByteArray&) { return 1; };
    /// Which of so many copies that wait is given next.
    std::function<std::size_t(std::size_t count)> next = [](std::size_t) { return std::size_t{0}; };
    std::function<void()> onFlush = [] {};
    bool isReading = true;
    QString station = QStringLiteral("tower");
    int fetches = 0;
    int maxMessage = vt::MaxRoadMessage;

    std::size_t CountListeners() const { return m_listeners.size(); }
    std::size_t CountComing() const { return m_coming.size(); }
    /// Hands over what has come. True if there was something.
    bool Deliver() {
        if (!isReading) return false;
        const bool hasSome = !m_coming.empty();
        while (!m_coming.empty() && isReading)
            DeliverOne();
        return DeliverFetched() || hasSome;
    }
    /// One message. True if there was one.
    bool DeliverOne() {
        if (m_coming.empty()) return false;
        const auto at = m_coming.begin() + static_cast<std::ptrdiff_t>(next(m_coming.size()));
        const Coming coming = *at;
        m_coming.erase(at);
        for (int i = fate(coming.message); i > 0 && m_listeners.count(coming.listener) != 0; --i)
            coming.listener->OnRoadMessage(coming.message.constData(), coming.message.size(), false);
        if (m_listeners.count(coming.listener) != 0) coming.listener->OnRoadInputDone();
        return true;
    }
    bool DeliverFetched() {
        if (m_fetches.empty()) return false;
        const auto [listener, range] = *m_fetches.begin();
        m_fetches.erase(m_fetches.begin());
        const QString road = m_listeners[listener];
        const std::vector<Published> all = m_bus.published;
        for (const Published& one : all) {
            const auto number = vt::NumberOnRoad(one.message.constData(), one.message.size());
            const bool isWanted = one.road == road && number && *number >= range.first &&
                                  *number <= range.second && m_bus.notKept.count(*number) == 0;
            if (isWanted && m_listeners.count(listener) != 0)
                listener->OnRoadMessage(one.message.constData(), one.message.size(), true);
        }
        if (m_listeners.count(listener) != 0) listener->OnFetched();
        return true;
    }

  private:
    friend class MemoryBus;
    struct Coming {
        IListener* listener;
        QByteArray message;
    };

    MemoryBus& m_bus;
    std::map<IListener*, QString> m_listeners;
    std::map<IListener*, std::pair<quint64, quint64>> m_fetches;
    std::deque<Coming> m_coming;
};

inline void MemoryBus::Publish(const QString& road, const QByteArray& message) {
    published.push_back({road, message});
    for (End* const end : m_ends)
        for (const auto& [listener, itsRoad] : end->m_listeners)
            if (itsRoad == road) end->m_coming.push_back({listener, message});
}
