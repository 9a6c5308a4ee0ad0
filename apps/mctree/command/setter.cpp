// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/setter.h>

#include <apps/common/safetext.h>
#include <apps/mctree/mirror/requestanswer.h>
#include <apps/mctree/text/contentinput.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/description.h>

#include <platform/values/treeitem.h>
#include <platform/values/visit.h>

#include <QtCore/QSet>

#include <algorithm>

namespace mctree {

namespace {

/// Answers that are listened to at the same time: a session has 256 subscriptions.
constexpr std::size_t MostAnswers = 16;

/// What is said where another content holds than the one asked for.
QString NotAsAsked(const values::TreeItem& item, const QString& path) {
    const QString traits = ShowTraits(item);
    const QString holds = QStringLiteral("%1 holds %2").arg(path, ShowContent(item).Joined());
    return traits.isEmpty() ? holds : holds + QStringLiteral(" (%1)").arg(traits);
}

}  // namespace

Setter::~Setter() = default;

QString Setter::Place::Shown() const {
    return safetext::Escaped(path);
}

void Setter::SetAll(const Targets& targets, const QString& text, const QString& prefix) {
    std::vector<Place> places;
    QSet<QString> known;
    const auto report = [&](Outcome outcome) {
        if (!outcome.message.isEmpty()) outcome.message.prepend(prefix);
        m_report.Add(outcome);
    };
    for (const Targets::Operand& operand : targets.Operands()) {
        bool isAny = false;
        for (const Target& target : Targets::Find(operand)) {
            if (operand.pattern->IsGlob() && target.item->IsNode()) continue;
            isAny = true;
            if (!known.contains(target.path)) places.push_back({target.path, target.mirror});
            known.insert(target.path);
        }
        if (!isAny) report(Targets::NotFound(operand));
    }
    for (const Place& place : places) {
        report(SetOne(place, text));
        if (m_context.session.IsInterrupted()) return;
    }
}

Outcome Setter::SetOne(const Place& place, const QString& text) {
    Outcome outcome;
    const auto answer = ListenToAnswer(place.path, &outcome);
    if (!outcome.IsDone()) return outcome;
    values::TreeItem* const item = place.Item();
    if (item == nullptr) return Outcome::RefusedAt(place.path, QStringLiteral("has gone"));
    m_context.session.Forget(item, place.path);
    const QString error = SetFromText(*item, text);
    if (!error.isEmpty())
        return {EExitCode::Usage, place.Shown() + QStringLiteral(": ") + safetext::Escaped(error)};
    // What holds already is not written, unless every write counts. Then nobody answers.
    const RequestAnswer* const awaited =
        m_context.session.Client().HasUnansweredWrites() ? answer.get() : nullptr;
    outcome = WaitForAnswer(place, awaited);
    if (outcome.IsDone()) return Conclude(place, text, awaited);
    if (m_context.arguments.isJson)
        PrintJson(place, QStringLiteral("refused"), {QStringLiteral("reason"), outcome.message});
    return outcome;
}

/// Waits for the answer to what was just set, and says what it is if it is no yes.
Outcome Setter::WaitForAnswer(const Place& place, const RequestAnswer* answer) {
    Session& session = m_context.session;
    IVtClient& client = session.Client();
    const values::TreeItem* const item = place.Item();  // to compare, should it go
    QString reason;
    const auto isRefused = [&] { return session.IsRefused(item, place.path, &reason); };
    const auto isAnswered = [&] {
        const bool isRequestAnswered = answer == nullptr || answer->Get();
        const bool isAll = isRequestAnswered && !client.HasUnansweredWrites();
        return isAll || isRefused() || !client.IsConnected();
    };
    const auto wait = session.WaitUntil(isAnswered, QDeadlineTimer(m_context.arguments.Timeout()));
    if (isRefused()) return Outcome::RefusedAt(place.path, reason);
    if (wait == Session::EWait::Interrupted) return Session::Interrupted(EExitCode::NoConnection);
    if (wait == Session::EWait::TimedOut || !client.IsConnected())
        return {EExitCode::NoConnection,
                place.Shown() + QStringLiteral(": no answer, so it is not known whether this was done")};
    if (answer != nullptr && answer->IsRefused(&reason)) return Outcome::RefusedAt(place.path, reason);
    if (place.Item() == nullptr) return Outcome::RefusedAt(place.path, QStringLiteral("has gone"));
    return Outcome();
}

Outcome Setter::Conclude(const Place& place, const QString& text, const RequestAnswer* answer) {
    const values::TreeItem& item = *place.Item();
    // The button of a request that was granted springs back.
    const bool isButton = answer != nullptr && values::Is<values::Value<bool>>(item);
    const bool isAsAsked = isButton || IsAsAsked(item, text);
    const bool isJson = m_context.arguments.isJson;
    if (isJson)
        PrintJson(place, isAsAsked ? QStringLiteral("done") : QStringLiteral("changed"),
                  {QStringLiteral("answer"), answer != nullptr ? *answer->Get() : QString()});
    if (isAsAsked) {
        if (!isJson) PrintWithUnit(item);
        return Outcome();
    }
    if (!isJson) m_context.printer.WriteLine(safetext::Escaped(PlainContent(item)));
    return {EExitCode::Done, NotAsAsked(item, place.Shown())};
}

/// What a number was taken for: whoever types "1184000" and means kHz is to see it.
void Setter::PrintWithUnit(const values::TreeItem& item) {
    const ShownContent content = ShowContent(item);
    if (!content.unit.isEmpty()) m_context.printer.WriteLine(content.Joined());
}

/// Listens to the answer to the request at \a path, if there is one.
std::unique_ptr<RequestAnswer> Setter::ListenToAnswer(const QString& path, Outcome* outcome) {
    const QString answerPath = RequestAnswer::PathFor(path);
    if (answerPath.isEmpty()) return nullptr;
    auto found = std::find_if(m_answers.begin(), m_answers.end(), [&answerPath](const auto& mirror) {
        return mirror->GetRemotePath() == answerPath;
    });
    if (found == m_answers.end()) {
        if (m_answers.size() == MostAnswers) m_answers.erase(m_answers.begin());
        m_answers.push_back(std::make_unique<Mirror>(m_context.session, answerPath, EPurpose::Look));
        found = m_answers.end() - 1;
    }
    *outcome = Settle(m_context.session, m_answers, QDeadlineTimer(m_context.arguments.Timeout()));
    if (!outcome->IsDone() || !(*found)->IsEstablished()) return nullptr;
    return std::make_unique<RequestAnswer>(m_context.session, **found);
}

void Setter::PrintJson(const Place& place, const QString& result, const Remark& remark) {
    const values::TreeItem* const item = place.Item();
    QJsonObject object = item != nullptr ? DescribeContent(*item) : QJsonObject();
    object[QStringLiteral("path")] = place.path;
    object[QStringLiteral("result")] = result;
    const QString unit = item != nullptr ? UnitOf(*item) : QString();
    if (!unit.isEmpty()) object[QStringLiteral("unit")] = unit;
    if (!remark.second.isEmpty()) object[remark.first] = remark.second;
    m_context.printer.WriteLine(ToLine(object));
}

}  // namespace mctree
