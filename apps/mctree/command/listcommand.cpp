// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/targets.h>
#include <apps/mctree/mirror/walk.h>
#include <apps/mctree/text/description.h>
#include <apps/mctree/text/table.h>

#include <QtCore/QSet>

#include <algorithm>

namespace mctree {

namespace {

constexpr int Indentation = 2;
constexpr int DeepestIndentation = 32;  // levels; beyond that a line would have room for nothing else

struct Listed {
    const values::TreeItem* item;
    QString path;
    int depth;
};

/// Collects what is to be listed, each item once: the value itself or what is below the node that a path
/// names, and whatever a glob matches, with all that is below it if that is asked for.
class Listing {
  public:
    explicit Listing(bool isRecursive) : m_isRecursive(isRecursive) {}

    void Add(const Target& target, bool isGlob) {
        const bool isItself = isGlob || !target.item->IsNode();
        if (isItself) Add(*target.item, *target.mirror, 0);
        Walk(*target.item, [&](values::TreeItem& item, int depth) {
            if (depth == 1 ? m_isRecursive || !isItself : depth > 1 && m_isRecursive)
                Add(item, *target.mirror, depth - 1);
        });
    }
    const std::vector<Listed>& Items() const { return m_items; }

  private:
    void Add(const values::TreeItem& item, const Mirror& mirror, int depth) {
        const QString path = mirror.RemotePathOf(item);
        if (m_known.contains(path)) return;
        m_known.insert(path);
        m_items.push_back({&item, path, depth});
    }

    const bool m_isRecursive;
    std::vector<Listed> m_items;
    QSet<QString> m_known;
};

QString ShownName(const values::TreeItem& item, const QString& name) {
    return safetext::Escaped(name) +
           (item.IsNode() && !name.endsWith(QLatin1Char('/')) ? QStringLiteral("/") : QString());
}

/// What is below one node is shown by its name there, indented if it is a whole tree; all else by its path.
void PrintColumns(const Context& context, const std::vector<Listed>& items) {
    const auto& patterns = context.arguments.patterns;
    const bool isBelowOne = patterns.size() == 1 && !patterns.front().IsGlob();
    std::vector<TableRow> rows;
    for (const Listed& listed : items) {
        const values::TreeItem& item = *listed.item;
        const bool isTop = listed.path == patterns.front().FixedPath();
        const QString name = isBelowOne && !isTop ? item.GetName() : listed.path;
        const int levels = isBelowOne ? std::min(listed.depth, DeepestIndentation) : 0;
        rows.push_back({QString(levels * Indentation, QLatin1Char(' ')) + ShownName(item, name), KindOf(item),
                        ShowContent(item), item.IsNode(), IsStale(item)});
    }
    PrintTable(rows, context.printer);
}

/// An array, one element per line.
void PrintJson(const Context& context, const std::vector<Listed>& items) {
    QString line;
    context.printer.WriteLine(QStringLiteral("["));
    for (const Listed& listed : items) {
        if (!line.isEmpty()) context.printer.WriteLine(line + QLatin1Char(','));
        line = ToLine(Describe(*listed.item, listed.path));
    }
    if (!line.isEmpty()) context.printer.WriteLine(line);
    context.printer.WriteLine(QStringLiteral("]"));
}

}  // namespace

Outcome RunList(const Context& context) {
    Targets targets(context.session, context.arguments.patterns, EPurpose::Look);
    const Outcome outcome = targets.Settle(QDeadlineTimer(context.arguments.Timeout()));
    if (!outcome.IsDone()) return outcome;
    Report report(context.tell);
    Listing listing(context.arguments.isRecursive);
    for (const Targets::Operand& operand : targets.Operands()) {
        const std::vector<Target> found = Targets::Find(operand);
        if (found.empty()) report.Add(Targets::NotFound(operand));
        for (const Target& target : found)
            listing.Add(target, operand.pattern->IsGlob());
    }
    const bool isNothing = listing.Items().empty() && !report.Result().IsDone();
    if (context.arguments.isJson && !isNothing)
        PrintJson(context, listing.Items());
    else if (context.printer.Style().isTerminal)
        PrintColumns(context, listing.Items());
    else
        for (const Listed& listed : listing.Items())
            context.printer.WriteLine(ShownName(*listed.item, listed.path));
    return report.Result();
}

}  // namespace mctree
