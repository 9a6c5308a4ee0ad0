// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/commands.h>

namespace mctree {

Outcome Run(const Context& context) {
    switch (context.arguments.command) {
        case ECommand::List:
            return RunList(context);
        case ECommand::Get:
            return RunGet(context);
        case ECommand::Set:
            return RunSet(context);
        case ECommand::Watch:
            return RunWatch(context);
        case ECommand::Hold:
            return RunHold(context);
        case ECommand::Info:
            return RunInfo(context);
        case ECommand::Events:
            return RunEvents(context);
        case ECommand::Stations:  // which needs no session
        case ECommand::None:
        case ECommand::Help:
        case ECommand::Version:
            break;
    }
    Q_UNREACHABLE();
}

}  // namespace mctree
