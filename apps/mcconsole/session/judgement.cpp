// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/judgement.h>

#include <apps/common/codedtext.h>
#include <apps/common/frequencytext.h>
#include <apps/common/problemtext.h>
#include <apps/common/whotext.h>
#include <apps/mcconsole/session/judgementparts.h>
#include <apps/pages/agetext.h>
#include <apps/pages/frequencylist.h>

#include <QtCore/QLocale>

#include <algorithm>

namespace {

using namespace judgementparts;

using EFact = ServerFacts::EFact;

constexpr char MasterRight[] = "MayBeJobMaster";
constexpr char UsualApplication[] = "mcserver";  // of a server that nobody gave a name

/// " since 14:03:21", where the server says so.
QString WithMoment(const QString& text, const std::optional<QString>& since) {
    const QString moment = since ? agetext::Moment(*since) : QString();
    return moment.isEmpty() ? text
                            : JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 since %2")).arg(text, moment);
}

/// The same without seconds, where room is short.
QString WithMinute(const QString& text, const std::optional<QString>& since) {
    constexpr int Seconds = 3;  // characters
    const QString moment = since ? agetext::Moment(*since) : QString();
    return moment.isEmpty() ? text
                            : JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 since %2"))
                                  .arg(text, moment.chopped(Seconds));
}

QString LatencyText(std::chrono::microseconds latency) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const double milliseconds = Milliseconds(latency).count();
    return JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 ms"))
        .arg(QLocale().toString(milliseconds, 'f', milliseconds < 100 ? 1 : 0));
}

SituationItem ConnectedServer(const QString& name, const Connection& connection) {
    const bool isSlow = connection.latency && *connection.latency >= judgement::SlowLatency;
    SituationItem item = MakeItem(isSlow ? ESeverity::Look : ESeverity::Ok, name, StatusPageName);
    item.brief = name;
    if (connection.shownLatency) item.word += QStringLiteral(", ") + LatencyText(*connection.shownLatency);
    const char* const text =
        connection.isEncrypted
            ? QT_TRANSLATE_NOOP("Judgement", "Connected to %1, encrypted. What is shown is live.")
            : QT_TRANSLATE_NOOP("Judgement", "Connected to %1. What is shown is live.");
    item.detail = JudgementText(text).arg(ShortName(connection.server.ToText()));
    return item;
}

/// What was refused, or granted and taken away, is still wanted, until the server answers something else.
void TellOfAnswer(const ServerFacts& facts, SituationItem* item) {
    const auto answer = CodedText::FromJsonText(facts.Text(EFact::OwnAnswerCode).value_or(QString()));
    if (!answer || (answer->GetCode() != ECode::Refused && answer->GetCode() != ECode::Ended)) return;
    item->detail += QLatin1Char('\n') + ShortReason(answer->Translated());
}

/// The right to be job master was taken from this console, which has asked for nothing since.
bool HasLostMastership(const ServerFacts& facts) {
    const auto answer = CodedText::FromJsonText(facts.Text(EFact::OwnAnswerCode).value_or(QString()));
    if (!answer || answer->GetCode() != ECode::Ended || answer->GetArguments().empty()) return false;
    const CodedText& reason = answer->GetArguments().front();
    return reason.GetCode() == ECode::NeedsPolicy && !reason.GetArguments().empty() &&
           reason.GetArguments().front().ToEnglish() == QLatin1String(MasterRight);
}

/// Who is tuned to a keyed frequency all the same has to see why.
void TellOfSuppression(const ServerFacts& facts, SituationItem* item) {
    if (facts.Flag(EFact::OwnBlanking).value_or(true)) return;
    item->severity = std::max(item->severity, ESeverity::Look);
    item->word += QStringLiteral(", ") + JudgementText(QT_TRANSLATE_NOOP("Judgement", "unprotected"));
    const QString by = whotext::Translated(facts.Text(EFact::OwnBlankingBy).value_or(QString()));
    const QString text =
        by.isEmpty() ? JudgementText(QT_TRANSLATE_NOOP(
                           "Judgement", "The ground transmitter suppression is switched off for it."))
                     : JudgementText(QT_TRANSLATE_NOOP(
                                         "Judgement",
                                         "The ground transmitter suppression is switched off for it, by %1."))
                           .arg(ShortReason(by));
    item->detail += QLatin1Char('\n') + text;
}

QString AnsweringText(double answering, double modules) {
    if (modules == 0)
        return JudgementText(QT_TRANSLATE_NOOP("Judgement", "The server has no input modules."));
    if (modules == 1)
        return answering == 1
                   ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "The input module is in use"))
                   : JudgementText(QT_TRANSLATE_NOOP("Judgement", "The input module is not in use"));
    return JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 of %2 modules are in use"))
        .arg(answering)
        .arg(modules);
}

}  // namespace

// As its administrator named it, else as the device that it owns.
QString judgement::ServerName(const ServerFacts& facts, const Connection& connection) {
    const QString given = connection.application.trimmed();
    if (!given.isEmpty() && given != QLatin1String(UsualApplication)) return ShortName(given);
    const QString device = facts.Text(EFact::DeviceName).value_or(QString()).trimmed();
    return ShortName(device.isEmpty() ? connection.server.host : device);
}

QString judgement::Frequency(double hz) {
    return QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(hz, 0));
}

SituationItem judgement::Server(const ServerFacts& facts, const Connection& connection,
                                std::chrono::milliseconds age) {
    const QString name = ServerName(facts, connection);
    const auto problem = [&] { return ShortReason(problemtext::Translated(connection.problem)); };
    SituationItem item;
    switch (connection.state) {
        case ConsoleSession::EState::Idle:
            item = MakeItem(ESeverity::Unknown,
                            JudgementText(QT_TRANSLATE_NOOP("Judgement", "not connected")), "");
            item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "A click asks for a server."));
            break;
        case ConsoleSession::EState::Connecting:
            item = MakeItem(ESeverity::Look, JudgementText(QT_TRANSLATE_NOOP("Judgement", "connecting")),
                            StatusPageName);
            item.detail = problem();
            break;
        case ConsoleSession::EState::Connected:
            item = ConnectedServer(name, connection);
            break;
        case ConsoleSession::EState::Lost:
            item =
                MakeItem(ESeverity::Act,
                         JudgementText(QT_TRANSLATE_NOOP("Judgement", "lost for %1")).arg(agetext::Of(age)),
                         StatusPageName);
            item.brief = JudgementText(QT_TRANSLATE_NOOP("Judgement", "lost"));
            item.detail =
                JudgementText(
                    QT_TRANSLATE_NOOP("Judgement", "The connection to %1 is lost; what is shown is %2 old."))
                    .arg(ShortName(connection.server.ToText()), agetext::Of(age));
            if (!problem().isEmpty()) item.detail += QLatin1Char('\n') + problem();
            break;
    }
    return item;
}

SituationItem judgement::Master(const ServerFacts& facts, const Connection& connection) {
    const std::optional<QString> master = facts.Text(EFact::MasterName);
    if (!master) return UnknownItem(MpxOrvsPageName);
    SituationItem item =
        MakeItem(ESeverity::Ok, JudgementText(QT_TRANSLATE_NOOP("Judgement", "nobody")), MpxOrvsPageName);
    const bool isLost = HasLostMastership(facts);
    if (isLost) item.severity = ESeverity::Look;
    if (master->isEmpty()) {
        item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "No MpxORV is job master."));
        if (isLost) {
            item.word = item.brief = JudgementText(QT_TRANSLATE_NOOP("Judgement", "taken away"));
            TellOfAnswer(facts, &item);
        }
        return item;
    }
    const bool isOwn = connection.isMpxOrvUsed && *master == connection.mpxOrvName;
    const QString name = ShortName(*master);
    const QString shown = isOwn ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "this console")) : name;
    item.brief = shown;
    item.word = WithMinute(shown, facts.Text(EFact::MasterSince));
    item.detail = WithMoment(JudgementText(QT_TRANSLATE_NOOP("Judgement", "Job master: %1")).arg(name),
                             facts.Text(EFact::MasterSince));
    if (isLost) TellOfAnswer(facts, &item);
    return item;
}

SituationItem judgement::Suppression(const ServerFacts& facts) {
    const std::optional<double> modules = facts.Number(EFact::ModuleCount);
    const std::optional<double> answering = facts.Number(EFact::AnsweringModules);
    if (!modules || !answering) return UnknownItem(SuppressionPageName);
    static const std::vector<double> none;
    const auto list = [&facts](EFact fact) -> const std::vector<double>& {
        const std::vector<double>* const found = facts.List(fact);
        return found != nullptr ? *found : none;
    };
    const std::vector<double>& keyed = list(EFact::KeyedFrequencies);
    const std::vector<double>& unsupervised = list(EFact::UnsupervisedFrequencies);
    SituationItem item = MakeItem(ESeverity::Ok, QString(), SuppressionPageName);
    if (*answering < *modules) item.severity = ESeverity::Look;
    if (!unsupervised.empty()) item.severity = ESeverity::Act;
    QStringList words;
    QStringList details;
    if (!unsupervised.empty()) {
        words += JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 NOT SUPERVISED")).arg(unsupervised.size());
        details += JudgementText(QT_TRANSLATE_NOOP("Judgement", "Not supervised: %1"))
                       .arg(frequencylist::Of(unsupervised));
    }
    if (!keyed.empty()) {
        words += JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 keyed")).arg(keyed.size());
        details += JudgementText(QT_TRANSLATE_NOOP("Judgement", "Keyed: %1")).arg(frequencylist::Of(keyed));
    }
    // Behind that there is room for the numbers alone.
    const QString answers =
        unsupervised.empty()
            ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 of %2 in use")).arg(*answering).arg(*modules)
            : QStringLiteral("%1/%2").arg(*answering).arg(*modules);
    words += *modules > 0 ? answers : JudgementText(QT_TRANSLATE_NOOP("Judgement", "no modules"));
    details += AnsweringText(*answering, *modules);
    const bool isQuiet = unsupervised.empty() && keyed.empty() && *modules > 0;
    item.brief =
        isQuiet ? QStringLiteral("%1/%2").arg(*answering).arg(*modules) : words.first();  // the gravest
    item.word = words.join(QStringLiteral(", "));
    item.detail = details.join(QLatin1Char('\n'));
    return item;
}

SituationItem judgement::Own(const ServerFacts& facts, const Connection& connection) {
    const bool isThere = !connection.mpxOrvPath.isEmpty() || facts.Key(EFact::OwnMode);
    if (!connection.isMpxOrvUsed)
        return MakeItem(ESeverity::Unknown, JudgementText(QT_TRANSLATE_NOOP("Judgement", "not used")),
                        OwnPageName);
    if (!isThere && connection.isMpxOrvMissing) {
        SituationItem item =
            MakeItem(ESeverity::Look, JudgementText(QT_TRANSLATE_NOOP("Judgement", "none")), OwnPageName);
        item.detail = ShortReason(problemtext::Translated(connection.mpxOrvProblem));
        return item;
    }
    if (!isThere) {
        SituationItem item = UnknownItem(OwnPageName);
        item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "There is none yet."));
        return item;
    }
    const std::optional<double> hz = facts.TunedFrequency();
    SituationItem item =
        MakeItem(ESeverity::Look, JudgementText(QT_TRANSLATE_NOOP("Judgement", "NOT TUNED")), OwnPageName);
    if (hz) {
        item.severity = ESeverity::Ok;
        item.word = Frequency(*hz);
    }
    item.brief = item.word;
    item.detail = ShortName(connection.mpxOrvName) + QStringLiteral(": ") +
                  (hz ? WithMoment(item.word, facts.Text(EFact::OwnTunedSince)) : item.word);
    if (!hz) {
        TellOfAnswer(facts, &item);
    } else if (facts.Has(EFact::UnsupervisedFrequencies, *hz)) {
        item.severity = ESeverity::Act;
        item.word += QStringLiteral(", ") + JudgementText(QT_TRANSLATE_NOOP("Judgement", "unsupervised"));
    } else if (facts.Has(EFact::KeyedFrequencies, *hz)) {
        item.severity = ESeverity::Look;
        item.word += QStringLiteral(", ") + JudgementText(QT_TRANSLATE_NOOP("Judgement", "keyed"));
    }
    TellOfSuppression(facts, &item);
    return item;
}

SituationItem judgement::Aged(SituationItem item, std::chrono::milliseconds age) {
    if (item.severity == ESeverity::Unknown) return item;
    item.severity = ESeverity::Stale;
    item.age = JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 old")).arg(agetext::Of(age));
    item.detail += QLatin1Char('\n') +
                   JudgementText(QT_TRANSLATE_NOOP("Judgement", "The connection is lost: %1.")).arg(item.age);
    return item;
}
