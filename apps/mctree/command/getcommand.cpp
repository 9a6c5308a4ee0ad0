// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/conditionwait.h>
#include <apps/mctree/mirror/targets.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/description.h>
#include <apps/mctree/text/linetext.h>
#include <apps/mctree/text/table.h>

#include <platform/values/treeitem.h>

#include <QtCore/QSet>

namespace mctree {

namespace {

/// Prints what is got: one content alone, or several with their paths.
class Getter {
  public:
    Getter(const Context& context, const Targets& targets)
        : m_context(context), m_targets(targets), m_report(context.tell) {}

    Outcome Print() {
        for (const Targets::Operand& operand : m_targets.Operands())
            PrintOperand(operand);
        PrintTable(m_rows, m_context.printer);
        return m_report.Result();
    }

  private:
    void PrintOperand(const Targets::Operand& operand) {
        const bool isGlob = operand.pattern->IsGlob();
        bool isAny = false;
        for (const Target& target : Targets::Find(operand)) {
            if (isGlob && target.item->IsNode()) continue;
            isAny = true;
            if (m_printed.contains(target.path)) continue;
            m_printed.insert(target.path);
            PrintTarget(target);
        }
        if (!isAny) m_report.Add(Targets::NotFound(operand));
    }

    void PrintTarget(const Target& target) {
        const values::TreeItem& item = *target.item;
        const QString path = safetext::Escaped(target.path);
        if (m_context.arguments.isJson)
            return m_context.printer.WriteLine(ToLine(Describe(item, target.path)));
        if (item.IsNode())
            return m_report.Add(
                {EExitCode::Refused, path + QStringLiteral(" is a node, which has no content (see ls)")});
        PrintContent(item, target.path);
        if (IsStale(item))
            m_report.Add(
                {EExitCode::Done, path + QStringLiteral(" is stale: this is its last known content")});
    }

    void PrintContent(const values::TreeItem& item, const QString& path) {
        const bool isTerminal = m_context.printer.Style().isTerminal;
        const QString content = PlainContent(item);
        if (IsAlone())
            m_context.printer.WriteLine(isTerminal ? safetext::Escaped(content) : content);
        else if (isTerminal)
            m_rows.push_back({safetext::Escaped(path), QString(), ShowContent(item), false, IsStale(item)});
        else
            m_context.printer.WriteLine(linetext::Joined(path, content));
    }

    /// Whether what is asked for can be but one content, so that no path has to say which it is.
    bool IsAlone() const {
        return m_targets.Operands().size() == 1 && !m_targets.Operands().front().pattern->IsGlob();
    }

    const Context& m_context;
    const Targets& m_targets;
    Report m_report;
    QSet<QString> m_printed;
    std::vector<TableRow> m_rows;
};

Outcome GetOnce(const Context& context, const Targets& targets) {
    return Getter(context, targets).Print();
}

}  // namespace

Outcome RunGet(const Context& context) {
    Targets targets(context.session, context.arguments.patterns, EPurpose::Look);
    if (!context.arguments.condition) {
        const Outcome outcome = targets.Settle(QDeadlineTimer(context.arguments.Timeout()));
        return outcome.IsDone() ? GetOnce(context, targets) : outcome;
    }
    // What is printed is what was there when the condition came to hold, though it may be over by now.
    Outcome printed;
    ConditionWait wait(context, targets, [&] { printed = GetOnce(context, targets); });
    const Outcome outcome = wait.Run();
    return outcome.IsDone() ? printed : outcome;
}

}  // namespace mctree
