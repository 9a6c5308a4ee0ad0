// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/serverlog.h>

#include <apps/mcserver/log/peertext.h>

#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <utility>

using eventcodes::EShown;

namespace {

/// What \a text is about, whatever was left out before it.
const eventcodes::Row& RowOf(const CodedText& text) {
    const bool isWrapped = text.GetCode() == ECode::LinesLeftOut && !text.GetArguments().empty();
    const ECode code = isWrapped ? text.GetArguments().front().GetCode() : text.GetCode();
    Q_ASSERT(code < ECode::FirstPart);
    return eventcodes::Of(code);
}

QString SourceOf(const eventcodes::Row& row, const QString& mpxOrv) {
    const QLatin1String name = eventcodes::SourceName(row.source);
    if (row.source != eventcodes::ESource::MpxOrv) return name;
    return name + QLatin1Char(' ') + mpxOrv;
}

}  // namespace

ServerLog::ServerLog(MCSStatus& status, IClock& clock, Sink sink)
    : m_status(status),
      m_clock(clock),
      m_sink(std::move(sink)),
      m_journal(clock),
      m_limiter(clock, [this](const LogLimiter::LeftOut& leftOut,
                              const QString& whose) { TellLeftOut(leftOut, whose); }),
      m_eventLimiter(clock, [this](const LogLimiter::LeftOut& leftOut, const QString& whose) {
          Write({ECode::EventsLeftOut, {CodedText::Number(leftOut.lines), whose}});
      }) {}

/// Of what the events did not tell either they do not tell that it was left out.
void ServerLog::TellLeftOut(const LogLimiter::LeftOut& leftOut, const QString& whose) {
    Origin origin;
    origin.isRepetition = !leftOut.hasNews;
    Write({ECode::LeftOut, {CodedText::Number(leftOut.lines), whose}}, origin);
}

void ServerLog::Write(const CodedText& text, const Origin& origin) {
    const eventcodes::Row& row = RowOf(text);
    const QString english = text.ToEnglish();
    if (row.shown != EShown::InEventsOnly) TellLine(english);
    if (row.shown != EShown::InLogOnly && !origin.isRepetition) AddEvent(text, english, origin);
}

void ServerLog::AddEvent(const CodedText& text, const QString& english, const Origin& origin) {
    const eventcodes::Row& row = RowOf(text);
    Event event;
    event.severity = row.severity;
    event.source = SourceOf(row, origin.mpxOrv);
    LearnActor();
    event.who = origin.who;
    if (event.who.isEmpty()) event.who = IsLocal() ? m_localName : m_actorPeerName;
    event.said = text;
    event.text = english;
    m_journal.Add(std::move(event));
}

void ServerLog::TellLine(const QString& text) {
    if (m_sink) m_sink(text);
    const QString time = m_clock.TimeOfDay().toString(QStringLiteral("HH:mm:ss"));
    if (auto* const message = m_status.GetLogMessageValue())
        message->SetValue(time + QLatin1Char(' ') + text, nullptr);
}

bool ServerLog::WriteFrom(const QString& source, const CodedText& text, const Origin& origin) {
    LogLimiter& limiter = RowOf(text).shown == EShown::InEventsOnly ? m_eventLimiter : m_limiter;
    const auto kind = origin.isRepetition ? LogLimiter::ELine::Repetition : LogLimiter::ELine::News;
    const QString english = text.ToEnglish();
    const std::optional<LogLimiter::LeftOut> leftOut = limiter.Admit(source, english, kind);
    if (!leftOut) return false;
    if (leftOut->lines == 0) {
        Write(text, origin);
        return true;
    }
    const CodedText line(ECode::LinesLeftOut, {text, CodedText::Number(leftOut->lines)});
    Origin ofLine = origin;
    ofLine.isRepetition |= !leftOut->hasNews;
    Write(line, ofLine);
    // The line says more than there is to be told of events.
    const bool isEvent = RowOf(text).shown != EShown::InLogOnly && !origin.isRepetition;
    if (isEvent && !leftOut->hasNews) AddEvent(text, english, origin);
    return true;
}

void ServerLog::SetActor(const CodedText& peer) {
    m_askForMpxOrv = nullptr;
    m_actor = peer;
    m_actorName = m_actorPeerName = peer.ToEnglish();
}

void ServerLog::SetActor(const VtPeer& peer, std::function<QString()> mpxOrv) {
    m_actorPeer = peer;
    m_askForMpxOrv = std::move(mpxOrv);
}

void ServerLog::LearnActor() const {
    const std::function<QString()> ask = std::exchange(m_askForMpxOrv, nullptr);
    if (!ask) return;
    m_actor = peertext::Coded(m_actorPeer, ask());
    m_actorName = m_actor.ToEnglish();
    m_actorPeerName = peertext::Name(m_actorPeer);
}

void ServerLog::SetLocalActor(const CodedText& who, std::function<bool()> isActing) {
    m_localActor = who;
    m_localName = who.ToEnglish();
    m_isLocalActing = std::move(isActing);
}

/// Once it is known that no peer acts.
bool ServerLog::IsLocal() const {
    return m_actor.IsEmpty() && m_isLocalActing && m_isLocalActing();
}

const CodedText& ServerLog::GetActorText() const {
    LearnActor();
    return IsLocal() ? m_localActor : m_actor;
}

const QString& ServerLog::GetActor() const {
    LearnActor();
    return IsLocal() ? m_localName : m_actorName;
}

CodedText ServerLog::ByActor(ECode code) const {
    const CodedText& actor = GetActorText();
    return actor.IsEmpty() ? CodedText() : CodedText(code, {actor});
}
