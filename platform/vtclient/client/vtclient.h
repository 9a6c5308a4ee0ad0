// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/client/calldepth.h>
#include <platform/vtclient/client/clientsession.h>
#include <platform/vtclient/client/clienttics.h>
#include <platform/vtclient/client/reconnector.h>
#include <platform/vtclient/client/turnrequest.h>
#include <platform/vtclient/iconnector.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/ivtlosses.h>
#include <platform/vtclient/ivtretry.h>
#include <platform/vtclient/vtclientcenter.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace vt {

/// The client without its sockets: connects through a connector, has a session while there is a channel, and
/// mirrors what its tics ask for. Main thread.
class VtClient final : public IVtClient,
                       public IVtRetry,
                       public IVtLosses,
                       public ITurnTaker,
                       private IConnector::IListener,
                       private ClientSession::IHost {
  public:
    VtClient(QString address, int port, VtClientOptions options, std::unique_ptr<IConnector> connector,
             std::unique_ptr<IEventLoop> loop);
    ~VtClient() override;
    VtClient(const VtClient&) = delete;
    VtClient& operator=(const VtClient&) = delete;

    /// Tells that the client goes, and ends everything. What is left can be destroyed when IsIdle().
    void Shutdown();
    /// Whether no call of this object is under way.
    bool IsIdle() const { return m_depth.IsIdle(); }

    bool IsConnected() const override { return m_session != nullptr && m_session->IsConnected(); }
    bool AreAllTicsEstablished() const override;
    QString GetServerAddress() const override { return m_address; }
    int GetServerPort() const override { return m_port; }
    IVtTic* AddTic(const QString& spec, const char* options) override;
    void RemoveTic(IVtTic* tic) override;
    void ReleaseNode(values::Node* node) override;
    QString GetLastError() const override { return m_reconnector.LastError(); }
    bool IsRefused() const override { return m_isRefused; }
    bool IsEncrypted() const override { return IsConnected() && m_session->IsEncrypted(); }
    bool HasUnansweredWrites() const override;
    QString GetServerApplication() const override;
    std::optional<std::chrono::microseconds> GetLatency() const override;
    bool Recall(const QString& path, quint64 before, int count, const IVtHistory::Answer& answer) override;
    quint64 GetServerEpoch() const override { return IsConnected() ? m_session->Epoch() : 0; }

    std::optional<std::chrono::milliseconds> GetTimeToRetry() const override;
    void RetryNow() override;
    std::optional<std::chrono::milliseconds> GetSilence() const override;

    const VtLoss& GetLastLoss() const override { return m_tics.LastLoss(); }

    void OnTurn() override;
    void OnDeadline() override;

  private:
    void OnConnected(std::unique_ptr<IChannel> channel) override;
    void OnConnectFailed(const QString& reason) override;
    void OnWelcome() override;
    void OnSessionEnded(const ClientSession::Ending& ending) override;
    void OnInputHandled() override;
    void OnDeadlineMoved() override { SetNextDeadline(); }

    void Flush();
    void SetNextDeadline();

    QString m_address;
    int m_port;
    VtClientOptions m_options;
    std::unique_ptr<IEventLoop> m_loop;
    CallDepth m_depth;
    TurnRequest m_turn;
    Reconnector m_reconnector;
    std::unique_ptr<ClientSession> m_session;                    ///< while there is a channel
    std::vector<std::unique_ptr<ClientSession>> m_deadSessions;  ///< may be telling right now
    ClientTics m_tics;
    bool m_isRefused = false;
    bool m_isEnded = false;
};

}  // namespace vt
