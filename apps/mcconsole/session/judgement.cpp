// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/judgement.h>

#include <apps/common/frequencytext.h>
#include <apps/common/problemtext.h>
#include <apps/pages/agetext.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

namespace {

using EFact = ServerFacts::EFact;

constexpr int MaxJudgedName = 40;      // of what others chose
constexpr int MaxJudgedReason = 200;   // of what the server says
constexpr std::size_t MostListed = 8;  // frequencies: more are not read at a glance
constexpr char StatusPageName[] = "Status";
constexpr char CommandsPageName[] = "Commands";
constexpr char MpxOrvsPageName[] = "MpxORVs";
constexpr char SuppressionPageName[] = "Suppression";
constexpr char OwnPageName[] = "MyMpxORV";

struct StateWord {
    int key;
    const char* text;
};

// clang-format off
constexpr StateWord BootWords[] = {
    {BootUnknown,     QT_TRANSLATE_NOOP("Judgement", "unknown")},
    {BootPowerOn,     QT_TRANSLATE_NOOP("Judgement", "power on")},
    {BootLoading,     QT_TRANSLATE_NOOP("Judgement", "loading")},
    {BootSelfTest,    QT_TRANSLATE_NOOP("Judgement", "self test")},
    {BootCalibrating, QT_TRANSLATE_NOOP("Judgement", "calibrating")},
    {BootReady,       QT_TRANSLATE_NOOP("Judgement", "ready")},
    {BootFailed,      QT_TRANSLATE_NOOP("Judgement", "failed")},
};
constexpr StateWord ModeWords[] = {
    {OperationIdle,        QT_TRANSLATE_NOOP("Judgement", "idle")},
    {OperationFfm,         QT_TRANSLATE_NOOP("Judgement", "fixed frequency")},
    {OperationAudio,       QT_TRANSLATE_NOOP("Judgement", "audio")},
    {OperationSearch,      QT_TRANSLATE_NOOP("Judgement", "search")},
    {OperationScan,        QT_TRANSLATE_NOOP("Judgement", "scan")},
    {OperationCalibration, QT_TRANSLATE_NOOP("Judgement", "calibration")},
    {OperationBuiltInTest, QT_TRANSLATE_NOOP("Judgement", "built-in test")},
    {OperationMemoryScan,  QT_TRANSLATE_NOOP("Judgement", "memory scan")},
};
// clang-format on

QString JudgementText(const char* text) {
    return QCoreApplication::translate("Judgement", text);
}

template <std::size_t size>
QString WordFor(const StateWord (&words)[size], int key) {
    for (const StateWord& word : words)
        if (word.key == key) return JudgementText(word.text);
    return QString::number(key);
}

SituationItem MakeItem(ESeverity severity, const QString& word, const char* page) {
    return {severity, word, QString(), QString(), QString::fromLatin1(page)};
}

SituationItem UnknownItem(const char* page) {
    SituationItem item =
        MakeItem(ESeverity::Unknown, JudgementText(QT_TRANSLATE_NOOP("Judgement", "unknown")), page);
    item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "The server does not tell."));
    return item;
}

QString ShortName(const QString& name) {
    return valuetext::Shortened(name, MaxJudgedName);
}

QString ShortReason(const QString& reason) {
    return valuetext::Shortened(reason, MaxJudgedReason);
}

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
    if (connection.latency) item.word += QStringLiteral(", ") + LatencyText(*connection.latency);
    const char* const text =
        connection.isEncrypted
            ? QT_TRANSLATE_NOOP("Judgement", "Connected to %1, encrypted. What is shown is live.")
            : QT_TRANSLATE_NOOP("Judgement", "Connected to %1. What is shown is live.");
    item.detail = JudgementText(text).arg(ShortName(connection.server.ToText()));
    return item;
}

}  // namespace

QString judgement::ServerName(const ServerFacts& facts, const Connection& connection) {
    const std::optional<QString> device = facts.Text(EFact::DeviceName);
    const QString name = device ? device->trimmed() : QString();
    return ShortName(name.isEmpty() ? connection.server.host : name);
}

QString judgement::Frequency(double hz) {
    return QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(hz, 0));
}

QString judgement::Frequencies(const std::vector<double>& hz) {
    QStringList texts;
    for (std::size_t i = 0; i < hz.size() && i < MostListed; ++i)
        texts += Frequency(hz[i]);
    if (hz.size() > MostListed)
        texts += JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 more")).arg(hz.size() - MostListed);
    return texts.join(QStringLiteral(", "));
}

SituationItem judgement::Server(const ServerFacts& facts, const Connection& connection,
                                std::chrono::milliseconds age) {
    const QString name = ServerName(facts, connection);
    const QString problem = ShortReason(problemtext::Translated(connection.problem));
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
            item.detail = problem;
            break;
        case ConsoleSession::EState::Connected:
            item = ConnectedServer(name, connection);
            break;
        case ConsoleSession::EState::Lost:
            item =
                MakeItem(ESeverity::Act,
                         JudgementText(QT_TRANSLATE_NOOP("Judgement", "lost for %1")).arg(agetext::Of(age)),
                         StatusPageName);
            item.detail =
                JudgementText(
                    QT_TRANSLATE_NOOP("Judgement", "The connection to %1 is lost; what is shown is %2 old."))
                    .arg(ShortName(connection.server.ToText()), agetext::Of(age));
            if (!problem.isEmpty()) item.detail += QLatin1Char('\n') + problem;
            break;
    }
    return item;
}

SituationItem judgement::Device(const ServerFacts& facts) {
    const std::optional<int> boot = facts.Key(EFact::BootState);
    if (!boot) return UnknownItem(StatusPageName);
    const QString bootWord = WordFor(BootWords, *boot);
    const QString connection = ShortReason(facts.Text(EFact::ConnectionState).value_or(QString()));
    SituationItem item;
    if (facts.Flag(EFact::IsOnline) == false && facts.Flag(EFact::ShallBeConnected) == false)
        item = MakeItem(ESeverity::Look, JudgementText(QT_TRANSLATE_NOOP("Judgement", "switched off")),
                        CommandsPageName);
    else if (facts.Flag(EFact::IsOnline) == false)
        item = MakeItem(ESeverity::Act, JudgementText(QT_TRANSLATE_NOOP("Judgement", "no connection")),
                        StatusPageName);
    else if (*boot == BootFailed)
        item = MakeItem(ESeverity::Act, bootWord, StatusPageName);
    else if (*boot != BootReady)
        item = MakeItem(ESeverity::Look, bootWord, StatusPageName);
    else
        item = MakeItem(ESeverity::Ok, bootWord, StatusPageName);
    const std::optional<int> mode = facts.Key(EFact::OperationMode);
    const QString modeWord = mode ? WordFor(ModeWords, *mode) : QString();
    if (item.severity == ESeverity::Ok && mode) item.word += QStringLiteral(", ") + modeWord;
    item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "Boot state: %1")).arg(bootWord);
    if (mode)
        item.detail +=
            QLatin1Char('\n') + JudgementText(QT_TRANSLATE_NOOP("Judgement", "Mode: %1")).arg(modeWord);
    if (!connection.isEmpty())
        item.detail += QLatin1Char('\n') +
                       JudgementText(QT_TRANSLATE_NOOP("Judgement", "Connection: %1")).arg(connection);
    return item;
}

SituationItem judgement::Master(const ServerFacts& facts, const Connection& connection) {
    const std::optional<QString> master = facts.Text(EFact::MasterName);
    if (!master) return UnknownItem(MpxOrvsPageName);
    SituationItem item =
        MakeItem(ESeverity::Ok, JudgementText(QT_TRANSLATE_NOOP("Judgement", "nobody")), MpxOrvsPageName);
    if (master->isEmpty()) {
        item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "No MpxORV is job master."));
        return item;
    }
    const bool isOwn = connection.isMpxOrvUsed && *master == connection.mpxOrvName;
    const QString name = ShortName(*master);
    const QString shown = isOwn ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "this console")) : name;
    item.word = WithMinute(shown, facts.Text(EFact::MasterSince));
    item.detail = WithMoment(JudgementText(QT_TRANSLATE_NOOP("Judgement", "Job master: %1")).arg(name),
                             facts.Text(EFact::MasterSince));
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
                       .arg(Frequencies(unsupervised));
    }
    if (!keyed.empty()) {
        words += JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 keyed")).arg(keyed.size());
        details += JudgementText(QT_TRANSLATE_NOOP("Judgement", "Keyed: %1")).arg(Frequencies(keyed));
    }
    // Behind that there is room for the numbers alone.
    const QString answers =
        unsupervised.empty()
            ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 of %2 answer")).arg(*answering).arg(*modules)
            : QStringLiteral("%1/%2").arg(*answering).arg(*modules);
    words += *modules > 0 ? answers : JudgementText(QT_TRANSLATE_NOOP("Judgement", "no modules"));
    details += *modules > 0
                   ? JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 of %2 modules answer"))
                         .arg(*answering)
                         .arg(*modules)
                   : JudgementText(QT_TRANSLATE_NOOP("Judgement", "The server has no input modules."));
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
        MakeItem(ESeverity::Ok, JudgementText(QT_TRANSLATE_NOOP("Judgement", "NOT TUNED")), OwnPageName);
    if (hz) item.word = Frequency(*hz);
    item.detail = ShortName(connection.mpxOrvName) + QStringLiteral(": ") +
                  (hz ? WithMoment(item.word, facts.Text(EFact::OwnTunedSince)) : item.word);
    if (hz && facts.Has(EFact::UnsupervisedFrequencies, *hz)) {
        item.severity = ESeverity::Act;
        item.word += QStringLiteral(", ") + JudgementText(QT_TRANSLATE_NOOP("Judgement", "unsupervised"));
    } else if (hz && facts.Has(EFact::KeyedFrequencies, *hz)) {
        item.severity = ESeverity::Look;
        item.word += QStringLiteral(", ") + JudgementText(QT_TRANSLATE_NOOP("Judgement", "keyed"));
    }
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
