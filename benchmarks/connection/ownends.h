// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "openaccess.h"
#include "road.h"

#include <platform/values/observable.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QByteArray>

class IVtClient;

namespace bench {

/// Passes the changes of one number on, with the number that it has on the road.
class NumberObserver final : public IObserver {
  public:
    using Number = values::ValueNumeric<int>;
    using Handler = std::function<void(int number, int content)>;

    NumberObserver(Number& value, int number, const Handler& handler);
    void Update(Observable* source, TChangeCode code) override;

  private:
    Number& m_value;
    int m_number;
    const Handler& m_handler;  // of the end of the road
};

/// A server of ours, on a socket of its own.
class OwnServerEnd : public ServerEnd {
  public:
    explicit OwnServerEnd(const RoadSetup& setup);

    void Open() override;
    void Set(int index, int content) override;

  protected:
    VtServer& Server() { return m_server; }
    /// What a client has reported.
    virtual void TakeReport(int client, int content) { onReport(client, content); }
    void Listen();

  private:
    OpenAccess m_access;
    values::Tree m_tree;
    VtServer m_server;
    std::vector<NumberObserver::Number*> m_values;
    const NumberObserver::Handler m_takeReport = [this](int client, int content) {
        TakeReport(client, content);
    };
    std::vector<std::unique_ptr<NumberObserver>> m_observers;
};

/// A client of ours. All of a process share one tree.
class OwnClientEnd final : public ClientEnd, private IObserver {
  public:
    /// Of the server at \a address, as clients take it.
    OwnClientEnd(const RoadSetup& setup, int client, QByteArray address, int port);

    void Open() override;
    void Report(int content) override;

  private:
    QString Mirror() const { return QStringLiteral("/Client%1").arg(m_client); }
    void Update(Observable* source, TChangeCode code) override;

    std::shared_ptr<values::Tree> m_tree;
    int m_values;
    int m_client;
    QByteArray m_address;
    int m_port;
    IVtClient* m_connection = nullptr;  // of the center
    NumberObserver::Number* m_report = nullptr;
    std::vector<std::unique_ptr<NumberObserver>> m_observers;
};

}  // namespace bench
