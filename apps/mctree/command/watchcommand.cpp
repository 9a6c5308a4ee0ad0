// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/watcher.h>

namespace mctree {

Outcome RunWatch(const Context& context) {
    Mirrors mirrors;
    Outcome outcome =
        Establish(context.session, context.arguments.paths, context.arguments.timeout, &mirrors);
    if (!outcome.IsDone()) return outcome;
    const Watcher watcher(context, mirrors);
    // Without a count of changes the user ends the command by interrupting it: that is no failure.
    context.session.WaitUntil([&watcher] { return watcher.IsDone(); },
                              QDeadlineTimer(QDeadlineTimer::Forever));
    return outcome;
}

}  // namespace mctree
