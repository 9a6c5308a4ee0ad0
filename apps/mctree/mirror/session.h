// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/text/outcome.h>
#include <platform/values/observation.h>
#include <platform/values/refusals.h>
#include <platform/vtclient/ivtclient.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>

#include <functional>
#include <vector>

class QEventLoop;

namespace mctree {

/// What a command waits with: runs the event loop until something holds, and remembers what the server
/// refused meanwhile.
class Session final : private IObserver, private values::IRefusalListener {
  public:
    enum class EWait { Met, TimedOut, Interrupted };

    /// When to go on though there is no connection: not at all, if there was one before, or always.
    enum class ERetry { Never, AfterLoss, Always };
    using Tell = std::function<void(const QString&)>;

    /// \a client is not owned and outlives this object. With ERetry::Always it is told through \a tell, in
    /// one line, that there is no connection yet.
    explicit Session(IVtClient& client, ERetry retry = ERetry::AfterLoss, Tell tell = nullptr);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    IVtClient& Client() { return *m_client; }

    /// Runs the event loop until \a condition holds, the deadline has passed or somebody interrupts. The
    /// condition is looked at first of all, then whenever the connection or a refusal tells something, and
    /// on Wake().
    EWait WaitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline);
    /// Waits for the connection. If there is none in time, or no point in trying again, says why.
    Outcome Connect(QDeadlineTimer deadline);
    /// Whether the connection was lost for good.
    bool IsLost() const { return m_retry == ERetry::Never && m_wasConnected && !m_client->IsConnected(); }
    /// What is said then.
    Outcome NoConnection() const;
    /// Where the server is, or is looked for, as a person would write it.
    QString Address() const;
    void Wake();
    /// Wakes when \a tic tells something. This object outlives it.
    void Follow(IVtTic& tic) { tic.AddObserver(this); }
    /// Ends every wait, from now on.
    void Interrupt();
    bool IsInterrupted() const { return m_isInterrupted; }

    /// Whether what was asked for \a path, or an edit of \a item (may be null), was refused; and why.
    bool IsRefused(const values::TreeItem* item, const QString& path, QString* reason) const;
    /// Forgets those refusals, since something is asked anew.
    void Forget(const values::TreeItem* item, const QString& path);
    /// A number for each mirror of the session.
    int NextMirror() { return m_mirrors++; }

    /// What is said where a wait was interrupted.
    static Outcome Interrupted(EExitCode code);

  private:
    struct Refusal {
        const values::TreeItem* item;  ///< to compare only
        QString path;
        QString reason;
    };

    void Update(Observable* source, TChangeCode code) override;
    void OnRefused(values::TreeItem* item, const QString& path, const QString& reason) override;

    bool IsPointless() const;
    void TellOfTrouble();

    Observation<IVtClient> m_client;
    ERetry m_retry;
    Tell m_tell;
    bool m_wasConnected = false;
    bool m_isTrouble = false;  ///< told
    int m_mirrors = 0;
    QEventLoop* m_loop = nullptr;  ///< of the innermost wait
    bool m_isInterrupted = false;
    std::vector<Refusal> m_refusals;
};

}  // namespace mctree
