// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>

#include <QtCore/QByteArrayList>

#include <algorithm>
#include <map>
#include <vector>

/// A bus that remembers what was published, and brings what a test says.
class MemoryBus final : public nats::INatsBus {
  public:
    struct Published {
        QByteArray subject;
        QByteArray data;
        quint64 watch;
    };
    struct Question {
        QByteArray subject;
        AnswerHandler handler;
    };

    void Open(bool) override { m_state = EState::Open; }
    void Persist() override {}
    void Close() override { m_state = EState::Closed; }
    EState State() const override { return m_state; }
    QString Problem() const override { return QString(); }
    void AddListener(IListener* listener) override { m_listeners.push_back(listener); }
    void RemoveListener(IListener* listener) override {
        m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
    }
    bool Publish(const QByteArray& subject, std::string_view head, std::string_view body,
                 quint64 watch) override {
        if (m_state != EState::Open) return false;
        QByteArray data(head.data(), static_cast<int>(head.size()));
        data.append(body.data(), static_cast<int>(body.size()));
        published.push_back({subject, data, watch});
        return true;
    }
    void Flush() override {
        ++flushes;
        if (takesAllWhenFlushed) unsent = 0;
    }
    qint64 Unsent() const override { return unsent; }
    qint64 MaxPayload() const override { return 1 << 20; }
    int Subscribe(const QByteArray& subject, Handler handler) override {
        m_handlers[++m_last] = {subject, std::move(handler)};
        return m_last;
    }
    void Unsubscribe(int subscription) override { m_handlers.erase(subscription); }
    void Request(const QByteArray& subject, const QByteArray&, Time, AnswerHandler handler) override {
        questions.push_back({subject, std::move(handler)});
    }
    bool IsLoopback() const override { return true; }
    bool IsEncrypted() const override { return false; }
    QString ServerAddress() const override { return QStringLiteral("memory"); }

    /// To all who listen to \a subject.
    void Deliver(std::string_view subject, const QByteArray& data) {
        const QByteArray whole(subject.data(), static_cast<int>(subject.size()));
        for (const auto& [number, subscription] : m_handlers)
            if (IsOf(whole, subscription.first))
                subscription.second({subject, {data.constData(), static_cast<std::size_t>(data.size())}, {}});
    }
    void Break(const QString& reason) { TellState(EState::Closed, reason); }
    /// The connection is lost, and made again.
    void Cut(const QString& reason) { TellState(EState::Connecting, reason); }
    void Mend() { TellState(EState::Open, QString()); }
    void TellState(EState state, const QString& reason) {
        m_state = state;
        for (IListener* const listener : std::vector<IListener*>(m_listeners))
            listener->OnNatsState(state, reason);
    }
    void Complain(const QString& complaint) {
        for (IListener* const listener : std::vector<IListener*>(m_listeners))
            listener->OnNatsComplaint(complaint);
    }
    void TellUnheard(quint64 watch) {
        for (IListener* const listener : std::vector<IListener*>(m_listeners))
            listener->OnNatsUnheard(watch);
    }
    void TellWritable() {
        for (IListener* const listener : std::vector<IListener*>(m_listeners))
            listener->OnNatsWritable();
    }
    qint64 PublishedBytes() const {
        qint64 size = 0;
        for (const Published& one : published)
            size += one.data.size();
        return size;
    }

    std::vector<Published> published;
    std::vector<Question> questions;
    qint64 unsent = 0;
    bool takesAllWhenFlushed = false;
    int flushes = 0;

  private:
    /// Whether who listens to \a wanted hears \a subject.
    static bool IsOf(const QByteArray& subject, const QByteArray& wanted) {
        const QByteArrayList parts = subject.split('.');
        const QByteArrayList all = wanted.split('.');
        for (int i = 0; i < all.size(); ++i) {
            if (all[i] == ">") return i < parts.size();
            if (i >= parts.size() || (all[i] != "*" && all[i] != parts[i])) return false;
        }
        return parts.size() == all.size();
    }

    EState m_state = EState::Closed;
    std::vector<IListener*> m_listeners;
    std::map<int, std::pair<QByteArray, Handler>> m_handlers;
    int m_last = 0;
};
