// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/arguments.h>
#include <apps/mctree/mirror/session.h>
#include <apps/mctree/text/outcome.h>
#include <apps/mctree/text/printer.h>

namespace mctree {

/// What every command works with.
struct Context {
    const Arguments& arguments;
    Session& session;
    Printer& printer;
};

/// Runs the command that the arguments name. Needs a tree and the application object.
Outcome Run(const Context& context);

// The commands, each in the file named after it.
Outcome RunList(const Context& context);   ///< what is at and below a path
Outcome RunGet(const Context& context);    ///< one content
Outcome RunSet(const Context& context);    ///< sets one content and waits for the server's answer
Outcome RunWatch(const Context& context);  ///< prints changes until interrupted
Outcome RunInfo(const Context& context);   ///< what is known of the server

}  // namespace mctree
