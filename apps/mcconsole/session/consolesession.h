// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>

#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/observation.h>
#include <platform/values/pathbinding.h>
#include <platform/values/refusals.h>
#include <platform/vtclient/ivtlosses.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>
#include <memory>
#include <optional>

class IVtRetry;
class MpxORVHandle;

/// The console's connection to one server: the server's tree mirrored below GetBasePath(), and the console's
/// own MpxORV. Comes back by itself after every loss. Main thread.
class ConsoleSession : public QObject,
                       private IObserver,
                       private values::IRefusalListener,
                       private PathBinding::IListener {
    Q_OBJECT

  public:
    enum class EState {
        Idle,        ///< no server was asked for
        Connecting,  ///< for the first time
        Connected,
        Lost  ///< was connected, and tries again
    };

    /// Mirrors the server's tree below \a basePath, where nothing else is.
    explicit ConsoleSession(const QString& basePath = DefaultBasePath(), QObject* parent = nullptr);
    ~ConsoleSession() override;

    /// Ends what there is, and connects to \a server. False if that cannot be right.
    bool Connect(const ServerAddress& server, const VtClientOptions& options);
    void Disconnect();

    EState GetState() const { return m_state; }
    const ServerAddress& GetServer() const { return m_server; }
    /// Why there is no connection, in one line; empty if nobody knows yet, or while there is one.
    QString GetProblem() const;
    bool IsEncrypted() const;
    /// The round trip to the server, or how long the one under way takes already; none while unknown.
    std::optional<std::chrono::microseconds> GetLatency() const;
    /// What the server calls itself, also while it is lost; empty before it has said so.
    const QString& GetServerApplication() const { return m_serverApplication; }
    /// How long until the next attempt; none while connected, and while an attempt is under way.
    std::optional<std::chrono::milliseconds> GetTimeToRetry() const;
    /// Makes the next attempt now.
    void RetryNow();
    /// How long the server has owed an answer and said nothing; none while it owes none.
    std::optional<std::chrono::milliseconds> GetSilence() const;
    /// Null while no server was asked for.
    IVtClient* GetVtClient() const;

    static QString DefaultBasePath() { return QStringLiteral("/Server"); }
    const QString& GetBasePath() const { return m_basePath; }
    /// The segments that are there: all at once, unless the server does not show all of them to this client.
    EMCSControlTreeSegments GetSegments() const { return m_segments; }

    /// How the console's MpxORV is called from its next one on; empty: by machine and program.
    void SetMpxOrvName(const QString& name) { m_mpxOrvName = name; }
    /// With a number behind it where another client has that name.
    QString GetMpxOrvName() const;
    /// Whether the console has an MpxORV of its own, whenever it is connected; true at first.
    void UseMpxOrv(bool isUsed);
    bool UsesMpxOrv() const { return m_usesMpxOrv; }
    /// The node of that MpxORV; empty while the server has none for this console.
    QString GetMpxOrvPath() const;
    /// Whether the server was asked for one, and does not give it.
    bool IsMpxOrvMissing() const;
    /// Why, as the server says; empty if it does not.
    QString GetMpxOrvProblem() const { return m_mpxOrvProblem; }

  Q_SIGNALS:
    /// Any of the above has changed.
    void Changed();
    /// Changes of the server's status have passed the console by.
    void Missed(const VtLoss& loss);

  private:
    void Update(Observable* source, TChangeCode code) override;
    void OnRefused(values::TreeItem* /*item*/, const QString& /*path*/, const QString& /*reason*/) override {}
    void OnSubtreeRefused(const QString& localPath, const QString& path, const QString& reason) override;
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void TellLoss();
    void UpdateState();
    void UpdateSegments();
    void UpdateMpxOrv();
    bool MayHaveMpxOrv() const;
    QString WantedMpxOrvName() const;
    QString FreeMpxOrvName() const;
    EMCSControlTreeSegments ConnectedSegments() const;
    IVtRetry* GetRetry() const;

    const QString m_basePath;
    ServerAddress m_server;
    VtClientOptions m_options;
    std::unique_ptr<MultiChannelServerClient> m_client;
    Observation<IVtClient> m_vtClient;  ///< the client's
    EState m_state = EState::Idle;
    QString m_serverApplication;
    EMCSControlTreeSegments m_segments = NoSegments;
    QTimer m_patience;  ///< with segments that the server may not show at all
    QString m_mpxOrvName;
    MpxORVHandle* m_mpxOrv = nullptr;  ///< owned by the client
    PathBinding m_mpxOrvThere;         ///< to a value in it that only the server makes
    QTimer m_mpxOrvPatience;           ///< until that comes
    bool m_usesMpxOrv = true;
    QString m_mpxOrvProblem;
    bool m_isUpdating = false;
};
