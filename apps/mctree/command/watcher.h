// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/watchlines.h>
#include <apps/mctree/mirror/subtreewatch.h>
#include <apps/mctree/mirror/targets.h>

#include <platform/values/observation.h>

#include <QtCore/QTimer>

#include <memory>
#include <vector>

namespace mctree {

/// Prints what there is in mirrors, unless only changes are asked for, then all that happens in them, and to
/// the connection, until enough changes were printed or the output is closed. Of the items in the mirrors
/// those count that the paths match, with all below them. What it holds grows with the mirrors, not with
/// time.
class Watcher final : private IObserver {
  public:
    /// The context and the targets, which are settled, outlive this object.
    Watcher(const Context& context, const Targets& targets);

    bool IsDone() const { return m_isDone; }

  private:
    struct Watched {
        const Mirror* mirror;
        std::unique_ptr<SubtreeWatch> subtree;
    };

    void Update(Observable* source, TChangeCode code) override;
    void PrintContents();
    template <class Function>
    void ForEachPresent(Function&& show);
    void Print(EEvent event, const values::TreeItem& item, const Mirror& mirror);
    bool IsAskedFor(EEvent event, const QString& path, const Mirror& mirror) const;
    void FollowTics();
    void FollowConnection();
    void TellLoss();
    void SettleStates();
    void CheckDone();

    const Context& m_context;
    const Targets& m_targets;
    WatchLines m_lines;
    std::vector<Watched> m_watched;
    QTimer m_settle;
    int m_printed = 0;
    bool m_isConnected = true;
    bool m_isDone = false;
    Observation<IVtClient> m_client;
};

}  // namespace mctree
