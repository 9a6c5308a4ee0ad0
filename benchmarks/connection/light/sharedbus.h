// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>

#include <QtCore/QObject>

#include <memory>
#include <utility>
#include <vector>

namespace bench {

/// A connection to NATS, which is open, as one of many sees it that share it: to each it seems its own.
class SharedBus final : public nats::INatsBus {
  public:
    explicit SharedBus(std::shared_ptr<nats::INatsBus> bus) : m_bus(std::move(bus)) {}

    void Open(bool isPersistent) override;
    void Persist() override {}
    void Close() override {}
    EState State() const override { return m_bus->State(); }
    QString Problem() const override { return m_bus->Problem(); }
    void AddListener(IListener* listener) override;
    void RemoveListener(IListener* listener) override;
    bool Publish(const QByteArray& subject, std::string_view head, std::string_view body,
                 quint64 watch) override {
        return m_bus->Publish(subject, head, body, watch);
    }
    void Flush() override { m_bus->Flush(); }
    qint64 Unsent() const override { return m_bus->Unsent(); }
    qint64 MaxPayload() const override { return m_bus->MaxPayload(); }
    int Subscribe(const QByteArray& subject, Handler handler) override {
        return m_bus->Subscribe(subject, std::move(handler));
    }
    void Unsubscribe(int subscription) override { m_bus->Unsubscribe(subscription); }
    void Request(const QByteArray& subject, const QByteArray& data, Time timeout,
                 AnswerHandler handler) override {
        m_bus->Request(subject, data, timeout, std::move(handler));
    }
    bool IsLoopback() const override { return m_bus->IsLoopback(); }
    bool IsEncrypted() const override { return m_bus->IsEncrypted(); }
    QString ServerAddress() const override { return m_bus->ServerAddress(); }

  private:
    const std::shared_ptr<nats::INatsBus> m_bus;
    std::vector<IListener*> m_listeners;  ///< to be told that it is open
    QObject m_timers;
};

}  // namespace bench
