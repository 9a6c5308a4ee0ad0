// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/subtreewatch.h>
#include <apps/mctree/mirror/targets.h>

#include <functional>
#include <memory>
#include <vector>

namespace mctree {

/// Waits until the condition of the arguments holds for all that paths name, each of which names something
/// then. Looks at every change, so what holds but for a moment counts as well.
class ConditionWait {
  public:
    /// \a onMet is called once, when the condition holds. All that is passed outlives this object.
    ConditionWait(const Context& context, Targets& targets, std::function<void()> onMet);

    /// Waits, for ever unless the arguments give a time. \return why the condition did not come to hold.
    Outcome Run();

  private:
    bool IsOver();
    void FollowTics();
    void Look();
    bool HoldsForAll();
    bool HoldsFor(const Targets::Operand& operand);

    const Context& m_context;
    Targets& m_targets;
    std::function<void()> m_onMet;
    std::vector<std::unique_ptr<SubtreeWatch>> m_watches;  ///< one for each mirror
    bool m_isMet = false;
    Outcome m_failure;
};

}  // namespace mctree
