// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/text/contentinput.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/description.h>

#include <platform/values/treeitem.h>

namespace mctree {

namespace {

/// Waits for the answer to what was just set, and says what it is if it is no yes.
Outcome WaitForAnswer(const Context& context, const Mirror& mirror, const QString& path) {
    IVtClient& client = context.session.Client();
    QString reason;
    const auto isAnswered = [&] {
        return mirror.IsRefused(&reason) || !client.HasUnansweredWrites() || !client.IsConnected();
    };
    const auto wait = context.session.WaitUntil(isAnswered, QDeadlineTimer(context.arguments.timeout));
    if (mirror.IsRefused(&reason)) return Outcome::RefusedAt(mirror.GetRemotePath(), reason);
    if (wait == Session::EWait::Interrupted) return Session::Interrupted(EExitCode::NoConnection);
    if (wait == Session::EWait::TimedOut || !client.IsConnected())
        return {EExitCode::NoConnection,
                path + QStringLiteral(": no answer, so it is not known whether this was done")};
    if (mirror.GetItem() == nullptr)
        return Outcome::RefusedAt(mirror.GetRemotePath(), QStringLiteral("has gone"));
    return Outcome();
}

/// What is said where another content holds than the one asked for.
QString NotAsAsked(const values::TreeItem& item, const QString& path) {
    const QString traits = ShowTraits(item);
    const QString holds = QStringLiteral("%1 holds %2").arg(path, ShowContent(item).Joined());
    return traits.isEmpty() ? holds : holds + QStringLiteral(" (%1)").arg(traits);
}

void PrintJson(const Context& context, const Mirror& mirror, const QString& result, const QString& reason) {
    const values::TreeItem* const item = mirror.GetItem();
    QJsonObject object = item != nullptr ? DescribeContent(*item) : QJsonObject();
    object[QStringLiteral("path")] = mirror.GetRemotePath();
    object[QStringLiteral("result")] = result;
    if (!reason.isEmpty()) object[QStringLiteral("reason")] = reason;
    context.printer.WriteLine(ToLine(object));
}

}  // namespace

Outcome RunSet(const Context& context) {
    Mirrors mirrors;
    Outcome outcome =
        Establish(context.session, context.arguments.paths, context.arguments.timeout, &mirrors);
    if (!outcome.IsDone()) return outcome;
    const Mirror& mirror = *mirrors.front();
    const QString path = safetext::Escaped(mirror.GetRemotePath());
    const QString& text = context.arguments.value;
    const QString error = SetFromText(*mirror.GetItem(), text);
    if (!error.isEmpty()) return {EExitCode::Usage, path + QStringLiteral(": ") + safetext::Escaped(error)};

    outcome = WaitForAnswer(context, mirror, path);
    const bool isJson = context.arguments.isJson;
    if (!outcome.IsDone()) {
        if (isJson) PrintJson(context, mirror, QStringLiteral("refused"), outcome.message);
        return outcome;
    }
    const values::TreeItem& item = *mirror.GetItem();
    const bool isAsAsked = IsAsAsked(item, text);
    if (isJson)
        PrintJson(context, mirror, isAsAsked ? QStringLiteral("done") : QStringLiteral("changed"), {});
    if (isAsAsked) return outcome;
    if (!isJson) context.printer.WriteLine(safetext::Escaped(PlainContent(item)));
    outcome.message = NotAsAsked(item, path);
    return outcome;
}

}  // namespace mctree
