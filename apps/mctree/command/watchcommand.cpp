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
    // To be interrupted is how this ends.
    context.session.WaitUntil([&watcher] { return watcher.IsDone(); },
                              QDeadlineTimer(QDeadlineTimer::Forever));
    return outcome;
}

}  // namespace mctree
