// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/roadgap.h>

#include <platform/vtclient/wire/vtlimits.h>

namespace vt {

void RoadGap::Open(Time now) {
    m_state = EState::Waiting;
    m_fetches = 0;
    m_deadline = now + vtlimits::RoadReorderTime;
}

std::optional<RoadGap::Time> RoadGap::Deadline() const {
    return IsOpen() ? std::optional(m_deadline) : std::nullopt;
}

RoadGap::EStep RoadGap::OnDeadline(Time now) {
    if (!IsOpen() || now < m_deadline) return EStep::Nothing;
    if (m_state == EState::Fetching) return OnFetched(now);
    if (m_fetches >= vtlimits::RoadFetches) return EStep::GiveUp;
    m_state = EState::Fetching;
    // A cluster in which nobody keeps anything says nothing at all to who asks, and one that has just lost a
    // server loses questions with it; ours may know. What comes late from a keeper is of use all the same.
    m_deadline = now + (m_fetches == 0 ? vtlimits::RoadFirstFetchTime : vtlimits::RoadFetchTime);
    ++m_fetches;
    return EStep::Fetch;
}

RoadGap::EStep RoadGap::OnFetched(Time now) {
    if (m_state != EState::Fetching) return EStep::Nothing;
    m_state = EState::Waiting;
    m_deadline = now + vtlimits::RoadFetchAgain * m_fetches;
    return EStep::AskServer;
}

}  // namespace vt
