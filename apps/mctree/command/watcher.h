// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/watchlines.h>
#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/mirror/subtreewatch.h>

#include <platform/values/observation.h>

#include <QtCore/QTimer>

#include <memory>
#include <vector>

namespace mctree {

/// Prints all that happens in established mirrors, and to the connection, until enough was printed or the
/// output is closed. What it holds grows with the mirrors, not with time.
class Watcher final : private IObserver {
  public:
    /// The context and the mirrors outlive this object.
    Watcher(const Context& context, const Mirrors& mirrors);

    bool IsDone() const { return m_isDone; }

  private:
    struct Watched {
        const Mirror* mirror;
        std::unique_ptr<SubtreeWatch> subtree;
    };

    void Update(Observable* source, TChangeCode code) override;
    void Print(EEvent event, const values::TreeItem& item, const Mirror& mirror);
    void FollowTics();
    void FollowConnection();
    void SettleStates();
    void CheckDone();

    const Context& m_context;
    WatchLines m_lines;
    std::vector<Watched> m_watched;
    QTimer m_settle;
    int m_printed = 0;
    bool m_isConnected = true;
    bool m_isDone = false;
    Observation<IVtClient> m_client;
};

}  // namespace mctree
