// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/description.h>

#include <platform/values/treeitem.h>

namespace mctree {

Outcome RunGet(const Context& context) {
    Mirrors mirrors;
    Outcome outcome =
        Establish(context.session, context.arguments.paths, context.arguments.timeout, &mirrors);
    if (!outcome.IsDone()) return outcome;
    const Mirror& mirror = *mirrors.front();
    const values::TreeItem& item = *mirror.GetItem();
    const QString path = safetext::Escaped(mirror.GetRemotePath());
    if (context.arguments.isJson) {
        context.printer.WriteLine(ToLine(Describe(item, mirror.GetRemotePath())));
        return outcome;
    }
    if (item.IsNode())
        return {EExitCode::Refused, path + QStringLiteral(" is a node, which has no content (see ls)")};
    const QString content = PlainContent(item);
    context.printer.WriteLine(context.printer.Style().isTerminal ? safetext::Escaped(content) : content);
    if (IsStale(item)) outcome.message = path + QStringLiteral(" is stale: this is its last known content");
    return outcome;
}

}  // namespace mctree
