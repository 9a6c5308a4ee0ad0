// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/connectiontexts.h>

#include <apps/common/problemtext.h>
#include <apps/mcconsole/session/consolesession.h>
#include <apps/mcconsole/session/situation.h>
#include <apps/pages/agetext.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QLocale>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ConnectionTexts)
};

QString BoundedText(const QString& text) {
    return valuetext::Shortened(text, connectiontexts::MostCharacters);
}

QString MissingText(const ConsoleSession& session) {
    const QString problem = problemtext::Translated(session.GetMpxOrvProblem());
    return problem.isEmpty() ? Texts::tr("There is no MpxORV: the server does not give this console one.")
                             : Texts::tr("There is no MpxORV: %1").arg(BoundedText(problem));
}

QString AttemptText(std::optional<std::chrono::milliseconds> wait) {
    if (!wait) return Texts::tr("An attempt is under way.");
    return Texts::tr("The next try is in %1.")
        .arg(agetext::Of(std::chrono::ceil<std::chrono::seconds>(*wait)));
}

}  // namespace

QString connectiontexts::Line(const ConsoleSession& session) {
    const QString server = BoundedText(session.GetServer().ToText());
    switch (session.GetState()) {
        case ConsoleSession::EState::Idle:
            return Texts::tr("Not connected");
        case ConsoleSession::EState::Connecting:
            return Texts::tr("Connecting to %1").arg(server);
        case ConsoleSession::EState::Connected:
            return session.IsEncrypted() ? Texts::tr("Connected to %1, encrypted").arg(server)
                                         : Texts::tr("Connected to %1").arg(server);
        case ConsoleSession::EState::Lost:
            return Texts::tr("The connection to %1 is lost").arg(server);
    }
    Q_UNREACHABLE();
}

QString connectiontexts::Banner(const ConsoleSession& session, const Situation& situation) {
    const ConsoleSession::EState state = session.GetState();
    if (state == ConsoleSession::EState::Idle) return Texts::tr("Not connected: choose Server, Connect.");
    if (state == ConsoleSession::EState::Connected) {
        const auto silence = situation.GetConnection().silence;
        if (!silence || *silence < LongSilence) return QString();
        return Texts::tr("The server has not answered for %1. What is shown may be old.")
            .arg(agetext::Of(*silence));
    }
    const QString problem = BoundedText(problemtext::Translated(session.GetProblem()));
    QString text = Line(session);
    if (!problem.isEmpty())
        text = Texts::tr("%1: %2", "What the connection does, and why").arg(text, problem);
    const QDateTime& since = situation.GetLostSince();
    const auto wait = session.GetTimeToRetry();
    if (since.isValid())
        text += QLatin1Char('\n') + Texts::tr("Lost at %1; what is shown is %2 old.")
                                        .arg(agetext::Moment(since), agetext::Of(situation.GetAge()));
    // Else the line has said so already.
    if (wait || state == ConsoleSession::EState::Lost) text += QLatin1Char(' ') + AttemptText(wait);
    return text;
}

QString connectiontexts::Latency(const ConsoleSession& session,
                                 std::optional<std::chrono::microseconds> latency) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const bool isConnected = session.GetState() == ConsoleSession::EState::Connected;
    const bool isKnown = isConnected && latency;
    QString text = isKnown
                       ? Texts::tr("%1 ms").arg(QLocale().toString(Milliseconds(*latency).count(), 'f', 2))
                       : QString();
    const auto silence = session.GetSilence();
    if (isConnected && silence && *silence >= LongSilence)
        text = Texts::tr("no answer for %1 ms").arg(QLocale().toString(qlonglong(silence->count())));
    return text;
}

QString connectiontexts::MpxOrv(const ConsoleSession& session) {
    const QString path = session.GetMpxOrvPath();
    if (!path.isEmpty()) return Texts::tr("MpxORV: %1").arg(BoundedText(path.section(QLatin1Char('/'), -1)));
    return session.IsMpxOrvMissing() ? MissingText(session) : Texts::tr("No MpxORV is connected.");
}
