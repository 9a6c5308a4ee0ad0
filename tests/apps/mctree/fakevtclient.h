// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/observable.h>
#include <platform/vtclient/ivtclient.h>

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <vector>

/// A tic of FakeVtClient.
class FakeVtTic final : public IVtTic {
  public:
    FakeVtTic(QString localPath, QString remotePath)
        : m_localPath(std::move(localPath)), m_remotePath(std::move(remotePath)) {}

    bool IsEstablished() const override { return isEstablished; }
    QString GetLocalPath() const override { return m_localPath; }
    QString GetRemotePath() const override { return m_remotePath; }

    bool IsAbsent() const override { return isAbsent; }

    bool isEstablished = false;
    bool isAbsent = false;

  private:
    QString m_localPath;
    QString m_remotePath;
};

/// A connection to a tree that the test has built: `server`. Each tic gets a copy of its subtree in the
/// process's tree when the connection is made. Edits of values that are subscribed directly are answered.
class FakeVtClient final : public IVtClient, private IObserver {
  public:
    FakeVtClient();
    ~FakeVtClient() override;

    bool IsConnected() const override { return m_isConnected; }
    bool AreAllTicsEstablished() const override;
    QString GetServerAddress() const override { return QStringLiteral("example"); }
    int GetServerPort() const override { return 7450; }
    IVtTic* AddTic(const QString& spec, const char* options) override;
    void RemoveTic(IVtTic* tic) override;
    void ReleaseNode(values::Node*) override {}
    QString GetLastError() const override { return lastError; }
    bool HasUnansweredWrites() const override { return m_isUnanswered; }
    QString GetServerApplication() const override { return application; }
    std::optional<std::chrono::microseconds> GetLatency() const override { return latency; }
    bool IsEncrypted() const override { return isEncrypted; }

    /// Connects at once, or when the event loop runs.
    void Connect();
    void ConnectSoon();
    /// Turns all that is mirrored stale, then tells.
    void Disconnect();
    /// Runs \a action when the event loop runs, after what was asked for before.
    void Soon(std::function<void()> action);

    const std::vector<std::unique_ptr<FakeVtTic>>& Tics() const { return m_tics; }

    values::Node server;  ///< the remote tree; its root
    QString lastError;
    QString application;
    std::optional<std::chrono::microseconds> latency;
    bool isEncrypted = false;
    bool isRootHidden = false;  ///< the root is not for this client
    /// What the server does with an edited value before it answers; null: nothing is ever answered.
    std::function<void(values::TreeItem&)> answer = [](values::TreeItem&) {};

  private:
    void Update(Observable* source, TChangeCode code) override;
    void Establish(FakeVtTic& tic);
    void SetStates(values::TValueState state);

    QObject m_context;  ///< what is to run soon does not outlive it
    std::vector<std::unique_ptr<FakeVtTic>> m_tics;
    bool m_isConnected = false;
    bool m_isUnanswered = false;
};
