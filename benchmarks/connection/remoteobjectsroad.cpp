// SPDX-License-Identifier: Apache-2.0
#include "remoteobjectsroad.h"

#include "rep_remoteobjects_merged.h"

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtRemoteObjects/QRemoteObjectHost>
#include <QtRemoteObjects/QRemoteObjectNode>

namespace bench {

namespace {

const QString reportName = QStringLiteral("Report");
const QString signalName = QStringLiteral("Changes");

QString ValueName(int index) {
    return QStringLiteral("Value%1").arg(index);
}

class ReportReceiver final : public ReportSlotSource {
  public:
    void report(int client, int content) override { onReport(client, content); }

    std::function<void(int client, int content)> onReport;
};

class ChangeSignalSender final : public ChangeSignalSource {};

// The sockets are made here, so that they send small packets at once, as those of the other roads do.
class RemoteServerEnd : public ServerEnd {
  public:
    void Open() override {
        m_receiver.onReport = onReport;
        m_host.setHostUrl(QUrl(QStringLiteral("mcsbench:server")),
                          QRemoteObjectHost::AllowExternalRegistration);
        m_host.enableRemoting(&m_receiver, reportName);
        OfferValues(m_host);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* const socket = m_server.nextPendingConnection();
            socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            m_host.addHostSideConnection(socket);
        });
        m_server.listen(QHostAddress(QHostAddress::LocalHost), 0);
        onOpen(m_server.serverPort());
    }

  protected:
    virtual void OfferValues(QRemoteObjectHost& host) = 0;

  private:
    QTcpServer m_server;
    QRemoteObjectHost m_host;
    ReportReceiver m_receiver;
};

class ValuesServerEnd final : public RemoteServerEnd {
  public:
    explicit ValuesServerEnd(const RoadSetup& setup) {
        for (int i = 0; i < setup.values; ++i)
            m_values.push_back(std::make_unique<RemoteValueSimpleSource>());
    }
    void Set(int index, int content) override {
        m_values[static_cast<std::size_t>(index)]->setContent(content);
    }

  private:
    void OfferValues(QRemoteObjectHost& host) override {
        int index = 0;
        for (const auto& value : m_values)
            host.enableRemoting(value.get(), ValueName(index++));
    }

    std::vector<std::unique_ptr<RemoteValueSimpleSource>> m_values;
};

class SignalServerEnd final : public RemoteServerEnd {
  public:
    void Set(int index, int content) override { emit m_sender.changed(index, content); }

  private:
    void OfferValues(QRemoteObjectHost& host) override { host.enableRemoting(&m_sender, signalName); }

    ChangeSignalSender m_sender;
};

class RemoteClientEnd : public ClientEnd {
  public:
    RemoteClientEnd(int client, int port) : m_client(client), m_port(static_cast<quint16>(port)) {}

    void Open() override {
        QObject::connect(&m_socket, &QTcpSocket::connected, &m_socket, [this] {
            m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
            m_node.addClientSideConnection(&m_socket);
            m_report.reset(m_node.acquire<ReportSlotReplica>(reportName));
            Await(*m_report);
            AcquireValues(m_node);
        });
        m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
    }
    void Report(int content) override { m_report->report(m_client, content); }

  protected:
    virtual void AcquireValues(QRemoteObjectNode& node) = 0;
    /// The road is ready when all that are awaited are there.
    void Await(QRemoteObjectReplica& replica) {
        ++m_awaited;
        QObject::connect(&replica, &QRemoteObjectReplica::initialized, &m_socket, [this] {
            if (--m_awaited == 0) onReady();
        });
    }

  private:
    int m_client;
    quint16 m_port;
    int m_awaited = 0;
    QTcpSocket m_socket;
    QRemoteObjectNode m_node;
    std::unique_ptr<ReportSlotReplica> m_report;
};

class ValuesClientEnd final : public RemoteClientEnd {
  public:
    ValuesClientEnd(const RoadSetup& setup, int client, int port)
        : RemoteClientEnd(client, port), m_count(setup.values) {}

  private:
    void AcquireValues(QRemoteObjectNode& node) override {
        for (int i = 0; i < m_count; ++i) {
            m_values.emplace_back(node.acquire<RemoteValueReplica>(ValueName(i)));
            RemoteValueReplica* const value = m_values.back().get();
            Await(*value);
            QObject::connect(value, &RemoteValueReplica::contentChanged, value,
                             [this, i](int content) { onChange(i, content); });
        }
    }

    int m_count;
    std::vector<std::unique_ptr<RemoteValueReplica>> m_values;
};

class SignalClientEnd final : public RemoteClientEnd {
  public:
    using RemoteClientEnd::RemoteClientEnd;

  private:
    void AcquireValues(QRemoteObjectNode& node) override {
        m_changes.reset(node.acquire<ChangeSignalReplica>(signalName));
        Await(*m_changes);
        QObject::connect(m_changes.get(), &ChangeSignalReplica::changed, m_changes.get(),
                         [this](int index, int content) { onChange(index, content); });
    }

    std::unique_ptr<ChangeSignalReplica> m_changes;
};

}  // namespace

Road MakeRemoteObjectsRoad() {
    return {QStringLiteral("remoteobjects"),
            [](const RoadSetup& setup) { return std::make_unique<ValuesServerEnd>(setup); },
            [](const RoadSetup& setup, int client, int port) {
                return std::make_unique<ValuesClientEnd>(setup, client, port);
            }};
}

Road MakeRemoteSignalRoad() {
    return {QStringLiteral("remotesignal"),
            [](const RoadSetup&) { return std::make_unique<SignalServerEnd>(); },
            [](const RoadSetup&, int client, int port) {
                return std::make_unique<SignalClientEnd>(client, port);
            }};
}

}  // namespace bench
