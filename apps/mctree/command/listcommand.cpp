// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/mirror/walk.h>
#include <apps/mctree/text/description.h>
#include <apps/mctree/text/table.h>

#include <algorithm>

namespace mctree {

namespace {

constexpr int Indentation = 2;
constexpr int DeepestIndentation = 32;  // levels; beyond that a line would have room for nothing else

/// Calls \a show(item, depth) for what is to be listed: the value itself, or what is below the node.
template <class Function>
void ForEachListed(values::TreeItem& top, bool isRecursive, Function&& show) {
    auto* const node = dynamic_cast<values::Node*>(&top);
    if (node == nullptr) return show(top, 0);
    if (isRecursive)
        return Walk(top, [&](values::TreeItem& item, int depth) {
            if (depth > 0) show(item, depth - 1);
        });
    for (values::TreeItem* item = node->GetFirstChild(); item != nullptr; item = item->GetNextSibling())
        show(*item, 0);
}

TableRow RowOf(const values::TreeItem& item, const QString& name) {
    const QString end = item.IsNode() ? QStringLiteral("/") : QString();
    return {safetext::Escaped(name) + end, KindOf(item), ShowContent(item), item.IsNode(), IsStale(item)};
}

/// The path of \a item from \a top on; of \a top itself all of it.
QString NameBelow(const Mirror& mirror, const values::TreeItem& top, const values::TreeItem& item) {
    if (&item == &top) return mirror.GetRemotePath();
    return item.GetPathName().mid(top.GetPathName().size() + 1);
}

void PrintText(const Context& context, const Mirror& mirror, values::TreeItem& top) {
    // Indented it reads like a tree; elsewhere each line has to say by itself where its item is.
    const bool isIndented = context.arguments.isRecursive && context.printer.Style().isTerminal;
    std::vector<TableRow> rows;
    ForEachListed(top, context.arguments.isRecursive, [&](const values::TreeItem& item, int depth) {
        const bool isShort = isIndented && &item != &top;
        TableRow row = RowOf(item, isShort ? item.GetName() : NameBelow(mirror, top, item));
        if (isIndented)
            row.name.prepend(QString(std::min(depth, DeepestIndentation) * Indentation, QLatin1Char(' ')));
        rows.push_back(std::move(row));
    });
    PrintTable(rows, context.printer);
}

/// An array, one element per line.
void PrintJson(const Context& context, const Mirror& mirror, values::TreeItem& top) {
    QString line;
    context.printer.WriteLine(QStringLiteral("["));
    ForEachListed(top, context.arguments.isRecursive, [&](const values::TreeItem& item, int) {
        if (!line.isEmpty()) context.printer.WriteLine(line + QLatin1Char(','));
        line = ToLine(Describe(item, mirror.RemotePathOf(item)));
    });
    if (!line.isEmpty()) context.printer.WriteLine(line);
    context.printer.WriteLine(QStringLiteral("]"));
}

}  // namespace

Outcome RunList(const Context& context) {
    Mirrors mirrors;
    Outcome outcome =
        Establish(context.session, context.arguments.paths, context.arguments.timeout, &mirrors);
    if (!outcome.IsDone()) return outcome;
    const Mirror& mirror = *mirrors.front();
    if (context.arguments.isJson)
        PrintJson(context, mirror, *mirror.GetItem());
    else
        PrintText(context, mirror, *mirror.GetItem());
    return outcome;
}

}  // namespace mctree
