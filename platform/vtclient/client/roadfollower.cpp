// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/roadfollower.h>

#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;

RoadFollower::IHost::~IHost() = default;

RoadFollower::RoadFollower(IHost& host, const QString& path) : m_host(host), m_path(path) {}

RoadFollower::~RoadFollower() {
    Unlisten();
}

// The subscription -----------------------------------------------------------------------------------------

void RoadFollower::Start(const Place& place) {
    Stop();
    m_place.emplace(place);
    m_pause = vtlimits::RoadFirstPause;
    m_state = EState::Asked;
    m_host.OnRoadWanted();
}

void RoadFollower::Stop() {
    Unlisten();
    m_state = EState::Off;
    m_retryAt = {};
    m_place.reset();
}

void RoadFollower::Lose() {
    Stop();
    m_due = 0;
}

void RoadFollower::Rest() {
    if (!IsListening()) return;
    Unlisten();
    m_state = EState::Asked;
}

void RoadFollower::Unlisten() {
    if (IsListening()) m_place->roads.Unlisten(this);
    m_keys.Restart(QString());
    m_pile.Clear();
    m_gap.Close();
    m_late.clear();
    m_lateBytes = 0;
    m_joined = std::string();
    m_applied = m_seen = m_at = m_awaited = m_known = 0;
    m_isSilent = false;
}

void RoadFollower::Listen(const QString& road) {
    Unlisten();
    m_road = road;
    m_keys.Restart(RoadPlace(m_place->roads, road));
    m_state = EState::Offered;
    m_heardAt = Now();
    m_place->roads.Listen(road, this);
    m_host.OnRoadDeadline();
}

// What comes in the session --------------------------------------------------------------------------------

void RoadFollower::OnRoad(const QString& road, quint32 key, const QString& secret) {
    if (m_state == EState::Off) return;  // it was given up, which the server may not know yet
    if (!IsListening() || road != m_road) Listen(road);
    if (!m_keys.Add(key, secret)) return GiveUp(QStringLiteral("its key is none"));
    for (const QByteArray& message : m_keys.TakeKept())
        if (IsListening()) Receive({message.constData(), static_cast<std::size_t>(message.size())}, false);
}

bool RoadFollower::OnAt(quint64 number) {
    if (m_state == EState::Heard) {
        m_state = EState::Taken;
        m_applied = number;
        m_pile.DropUpTo(number);
        m_takenAt = m_heardAt = Now();
        m_host.OnRoadDeadline();
    } else if (m_state != EState::Taken) {
        return true;
    }
    m_at = number;
    if (m_applied < number) m_awaited = number;
    Advance();
    return m_awaited == 0;
}

// The server handles the request later than it has said what has come by now.
void RoadFollower::OnRequest() {
    if (m_due++ == 0) m_known = m_seen;
}

void RoadFollower::OnAnswered() {
    if (m_due == 0) return;
    --m_due;
    Advance();
}

quint64 RoadFollower::Limit() const {
    return m_due == 0 ? std::numeric_limits<quint64>::max() : std::max(m_known, m_at);
}

// What comes by the road -----------------------------------------------------------------------------------

// In the middle of something else only that goes on: whoever is told may run an event loop.
void RoadFollower::OnRoadMessage(const char* data, qint64 size, bool isFetched) {
    if (!IsListening()) return;
    if (m_place->depth.IsIdle()) {
        const CallDepth::Call call(m_place->depth);
        return Receive({data, static_cast<std::size_t>(size)}, isFetched);
    }
    const auto bytes = static_cast<std::size_t>(size);
    if (m_lateBytes + bytes > vtlimits::MaxRoadAhead || m_late.size() >= vtlimits::MaxRoadAheadMessages)
        return;  // missed, and fetched when its turn comes
    m_late.emplace_back(data, static_cast<int>(size));
    m_lateBytes += bytes;
}

void RoadFollower::OnRoadInputDone() {
    if (!m_place) return;
    const CallDepth::Call call(m_place->depth);
    m_host.OnRoadHandled();
}

void RoadFollower::Receive(std::string_view message, bool isFetched) {
    const auto envelope = RoadEnvelope::Of(message.data(), static_cast<qint64>(message.size()));
    if (!envelope) return NoteStranger();
    const bool isTaken = m_state == EState::Taken;
    const bool isHere = (isTaken && envelope->number <= m_applied) || m_pile.Has(envelope->number);
    if (isHere && isFetched) return;
    std::string_view content;
    const RoadKeys::EOpened opened = m_keys.Open(*envelope, message, &content);
    if (opened == RoadKeys::EOpened::Foreign) return NoteStranger();
    // What is here already the server says once more for somebody else.
    if (opened == RoadKeys::EOpened::Opened && !isHere)
        Accept(envelope->number, content, envelope->isContinued);
}

void RoadFollower::Accept(quint64 number, std::string_view content, bool isContinued) {
    m_seen = std::max(m_seen, number);
    m_heardAt = Now();
    m_isSilent = false;
    const bool isNext = m_state == EState::Taken && number == m_applied + 1 && number <= Limit();
    if (isNext && !m_isAdvancing) {
        m_isAdvancing = true;
        Apply(number, content, isContinued);
        m_isAdvancing = false;
    } else {
        m_pile.Add(number, content, isContinued, m_state == EState::Taken);
    }
    if (m_state == EState::Offered) {
        m_state = EState::Heard;
        m_host.OnRoadHeard(m_road);
    }
    Advance();
}

void RoadFollower::Apply(quint64 number, std::string_view content, bool isContinued) {
    m_applied = number;
    const bool isPiece = isContinued || !m_joined.empty();
    const bool isGood = isPiece ? Join(number, content, isContinued) : m_host.OnRoadContent(content, number);
    if (!isGood && m_state == EState::Taken)
        GiveUp(QStringLiteral("message %1 cannot be applied").arg(number));
}

bool RoadFollower::Join(quint64 number, std::string_view content, bool isContinued) {
    if (m_joined.empty()) m_joinedAt = number;
    m_joined.append(content);
    if (m_joined.empty() || m_joined.size() > MaxRoadMessage) return false;
    if (isContinued) return true;
    const std::string whole = std::exchange(m_joined, {});  // whoever is told may end the road
    return m_host.OnRoadContent(whole, m_joinedAt);
}

void RoadFollower::Advance() {
    if (m_isAdvancing || m_state != EState::Taken) return;
    m_isAdvancing = true;
    AdvanceWhile(TurnBudget(m_place->loop, Now(), vtlimits::TurnTime));
    m_isAdvancing = false;
    LookForGap();
}

void RoadFollower::AdvanceWhile(const TurnBudget& budget) {
    while (m_state == EState::Taken) {
        if (m_awaited != 0 && m_applied >= m_awaited) {
            m_awaited = 0;
            m_host.OnRoadReached();
            continue;
        }
        const quint64 next = m_applied + 1;
        const std::optional<RoadPile::Content> content = next <= Limit() ? m_pile.Take(next) : std::nullopt;
        if (!content) return;
        const QByteArray& bytes = content->bytes;
        Apply(next, {bytes.constData(), static_cast<std::size_t>(bytes.size())}, content->isContinued);
        if (m_state == EState::Taken && budget.IsUp()) return m_place->turn.Make();
    }
}

void RoadFollower::OnTurn() {
    while (IsListening() && !m_late.empty()) {
        const QByteArray message = std::move(m_late.front());
        m_late.pop_front();
        m_lateBytes -= static_cast<std::size_t>(message.size());
        Receive({message.constData(), static_cast<std::size_t>(message.size())}, true);
    }
    Advance();
}

// What is missing ------------------------------------------------------------------------------------------

void RoadFollower::LookForGap() {
    if (m_state != EState::Taken) return;
    const bool isMissing = std::max(m_seen, m_awaited) > m_applied && !m_pile.Has(m_applied + 1);
    if (!isMissing && !m_isSilent) return m_gap.Close();
    if (m_gap.IsOpen() && m_missing == m_applied + 1) return;
    m_missing = m_applied + 1;
    m_wholeAt = m_isSilent ? m_heardAt : Now();
    m_gap.Open(Now());
    m_host.OnRoadDeadline();
}

void RoadFollower::OnFetched() {
    if (!m_place) return;
    const CallDepth::Call call(m_place->depth);
    if (m_state == EState::Taken) DoAboutGap(m_gap.OnFetched(Now()));
    if (m_place) m_host.OnRoadDeadline();
    m_host.OnRoadHandled();
}

void RoadFollower::DoAboutGap(RoadGap::EStep step) {
    const quint64 last = m_pile.IsEmpty() ? std::max({m_seen, m_awaited, m_missing}) : m_pile.First() - 1;
    if (step == RoadGap::EStep::Fetch) {
        const quint64 most = m_isSilent ? m_applied + vtlimits::MaxRoadAheadMessages : last;
        if (m_place->roads.Fetch(this, m_applied + 1, most)) return;
        step = m_gap.OnFetched(Now());
    }
    if (step == RoadGap::EStep::AskServer) m_host.OnRoadMissing(m_applied + 1, last);
    if (step != RoadGap::EStep::GiveUp) return;
    if (m_isSilent)
        GiveUp(QStringLiteral("nothing came by it for %1 ms")
                   .arg(duration_cast<milliseconds>(Now() - m_heardAt).count()));
    else
        GiveUp(QStringLiteral("messages %1 to %2 of it are lost").arg(m_missing).arg(last));
}

void RoadFollower::GiveUp(const QString& why) {
    const bool wasTaken = m_state == EState::Taken;
    const QString what = wasTaken ? QStringLiteral(
                                        "taking a new snapshot; of messages and events, what came "
                                        "meanwhile is lost")
                                  : QStringLiteral("staying with the session");
    TraceClient(QStringLiteral("The shared road of '%1' is given up: %2: %3").arg(m_path, why, what));
    if (wasTaken && Now() - m_takenAt >= vtlimits::RoadLongestPause) m_pause = vtlimits::RoadFirstPause;
    const double share = (1.0 + m_place->loop.Random()) / 2;
    m_retryAt = Now() + duration_cast<microseconds>(m_pause * share);
    m_pause = std::min(2 * m_pause, vtlimits::RoadLongestPause);
    const microseconds age = m_gap.IsOpen() ? Now() - m_wholeAt : microseconds::zero();
    Unlisten();
    m_state = EState::Off;
    m_host.OnRoadLost(wasTaken, age);
    m_host.OnRoadDeadline();
}

// Anybody may do it at any rate: one line for all of it, now and then.
void RoadFollower::NoteStranger() {
    ++m_strangers;
    if (m_toldAt && Now() - *m_toldAt < vtlimits::RoadTellEvery) return;
    m_toldAt = Now();
    TraceClient(
        QStringLiteral("Somebody else publishes on the shared road of '%1': %2 messages were dropped that "
                       "were forged, damaged or repeated")
            .arg(m_path)
            .arg(std::exchange(m_strangers, 0)));
}

// Time -----------------------------------------------------------------------------------------------------

std::optional<microseconds> RoadFollower::Deadline() const {
    if (m_state == EState::Off && m_place && m_retryAt != microseconds()) return m_retryAt;
    if (m_state == EState::Offered) return m_heardAt + vtlimits::RoadHearTime;
    if (m_state != EState::Taken) return std::nullopt;
    const auto gap = m_gap.Deadline();
    return gap ? *gap : m_heardAt + m_place->silence;
}

void RoadFollower::OnDeadline() {
    const auto deadline = Deadline();
    if (!deadline || Now() < *deadline) return;
    if (m_state == EState::Off) {
        m_retryAt = {};
        m_state = EState::Asked;
        m_host.OnRoadWanted();
    } else if (m_state == EState::Offered) {
        GiveUp(QStringLiteral("nothing comes by it"));
    } else if (m_gap.IsOpen()) {
        DoAboutGap(m_gap.OnDeadline(Now()));
    } else {
        m_isSilent = true;
        LookForGap();
    }
}

}  // namespace vt
