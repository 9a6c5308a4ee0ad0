// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>

#include <platform/values/observation.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>
#include <vector>

namespace values {
class Node;
class Tree;
}  // namespace values

/// A look at the tree of a running server, which makes and changes nothing there. The tree is mirrored to a
/// place of its own, so that nothing that is laid out shows it or writes to it. Everything happens in the
/// event loop; nothing waits. Main thread.
class PathSession final : public QObject, private IObserver {
    Q_OBJECT

  public:
    enum class EState {
        Idle,
        Connecting,
        Reading,  ///< connected, the tree is on its way
        Ready,
        Lost,   ///< was ready; tries to come back
        Failed  ///< and does not try again
    };

    /// How long a server may take to answer and to show its tree, before that has failed.
    static constexpr std::chrono::milliseconds Patience{10'000};

    explicit PathSession(QObject* parent = nullptr);
    ~PathSession() override;

    /// Leaves what it looked at, and begins to connect. The token in \a options is forgotten at once.
    void Connect(const ServerAddress& server, const VtClientOptions& options);
    /// The mirrored items go.
    void Disconnect();

    EState GetState() const { return m_state; }
    /// Why there is no connection, in one line; empty if nobody knows.
    QString GetProblem() const { return m_problem; }
    /// Below which the server's tree is; null while there is none.
    values::Node* GetTop() const { return m_top.Get(); }
    /// Where the server has what is here at \a localPath.
    QString ServerPathOf(const QString& localPath) const { return localPath.mid(m_place.size()); }
    /// And the way back.
    QString LocalPathOf(const QString& serverPath) const { return m_place + serverPath; }

  Q_SIGNALS:
    void StateChanged();
    /// Items came or went below the top.
    void StructureChanged();

  private:
    void Update(Observable* source, TChangeCode code) override;
    void AddTics();
    void Judge();
    EState Look();
    bool HasTree() const;
    void Leave(EState state, const QString& problem);
    void DropTree();

    std::unique_ptr<values::Tree> m_ownTree;  ///< where the process has none
    QString m_place;
    Observation<IVtClient> m_client;
    Observation<values::Node> m_top;
    std::vector<IVtTic*> m_tics;  ///< owned by the client
    EState m_state = EState::Idle;
    QString m_problem;
    QElapsedTimer m_since;
    QTimer m_timer;  ///< for what nobody tells of: that an attempt failed, and that time is up
};
