// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/observable.h>

#include <tests/support/doubles/fakevtclient.h>

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <functional>

/// A connection to a tree that the test has built: `server`. Each tic gets a copy of its subtree in the
/// process's tree when the connection is made. Edits of what was there then are answered.
class ServedVtClient final : public FakeVtClient, private IObserver {
  public:
    ServedVtClient() : FakeVtClient(QStringLiteral("example")) {}
    ~ServedVtClient() override;

    /// Connects at once, or when the event loop runs.
    void Connect();
    void ConnectSoon();
    /// Turns all that is mirrored stale, then tells.
    void Disconnect();
    /// Runs \a action when the event loop runs, after what was asked for before.
    void Soon(std::function<void()> action);

    /// The names of the values that were edited, in order.
    const QStringList& Written() const { return m_written; }
    /// The most tics that there were at the same time.
    std::size_t MostTics() const { return m_mostTics; }

    bool Recall(const QString& /*path*/, quint64 before, int count, const IVtHistory::Answer& tell) override {
        if (!recall) return false;
        Soon([this, before, count, tell] { tell(recall(before, count)); });
        return true;
    }
    /// What the server answers to who asks what was before; null: not asked.
    std::function<VtHistoryPage(quint64 before, int count)> recall;

    values::Node server;        ///< the remote tree; its root
    bool isRootHidden = false;  ///< the root is not for this client
    /// What the server does with an edited value before it answers; null: nothing is ever answered.
    std::function<void(values::TreeItem&)> answer = [](values::TreeItem&) {};

  private:
    void OnTicAdded(FakeVtTic& tic) override;
    void OnTicRemoved(IVtTic& tic) override;
    void Update(Observable* source, TChangeCode code) override;
    void Establish(FakeVtTic& tic);
    void StopObserving(const IVtTic& tic);
    static void SetStates(values::TValueState state);

    QStringList m_written;
    std::size_t m_mostTics = 0;
    QObject m_context;  ///< what is to run soon does not outlive it
};
