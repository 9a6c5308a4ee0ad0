// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/arguments.h>
#include <apps/mctree/mirror/session.h>
#include <apps/mctree/text/outcome.h>
#include <apps/mctree/text/printer.h>
#include <apps/mctree/text/report.h>

namespace mctree {

/// What every command works with.
struct Context {
    const Arguments& arguments;
    Session& session;
    Printer& printer;
    /// Takes what is to be said at once, one line, beside the output.
    const Report::Tell& tell;
};

/// Runs the command that the arguments name. Needs a tree and the application object.
Outcome Run(const Context& context);

// The commands, each in the file named after it.
Outcome RunList(const Context& context);    ///< what is at and below paths
Outcome RunGet(const Context& context);     ///< contents, also once a condition holds
Outcome RunSet(const Context& context);     ///< sets contents and waits for the server's answers
Outcome RunWatch(const Context& context);   ///< prints contents and changes until interrupted
Outcome RunHold(const Context& context);    ///< uses what is at paths until interrupted
Outcome RunInfo(const Context& context);    ///< what is known of the server
Outcome RunEvents(const Context& context);  ///< what happened at the server, and what happens

/// What stations there are at NATS. Needs the application object only.
Outcome RunStations(const Arguments& arguments, Printer& printer);

}  // namespace mctree
