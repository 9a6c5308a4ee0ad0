// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/roads/keptmessages.h>

#include <algorithm>
#include <utility>

namespace nats {

KeptMessages::KeptMessages(NatsKeeper& keeper, QByteArray subject, vt::IRoads::IListener& listener,
                           quint64 from, quint64 to)
    : m_keeper(keeper), m_subject(std::move(subject)), m_listener(&listener), m_next(from), m_to(to) {}

void KeptMessages::AskMore() {
    for (; m_asked < AtOnce && m_next <= m_to; ++m_next, ++m_asked) {
        m_keeper.Get(m_subject + QByteArray::number(m_next),
                     [self = shared_from_this(), number = m_next](const std::optional<QByteArray>& message) {
                         self->OnAnswer(number, message);
                     });
    }
}

// Behind the first one that is not there nothing is of use, and whoever listens had better look elsewhere at
// once: questions may be lost with a server of NATS, and then others are never answered. What is found all
// the same is given.
void KeptMessages::OnAnswer(quint64 number, const std::optional<QByteArray>& message) {
    --m_asked;
    if (m_listener == nullptr) return;
    const bool isFound = message && vt::NumberOnRoad(message->constData(), message->size()) == number;
    if (isFound)
        m_listener->OnRoadMessage(message->constData(), message->size(), true);
    else
        m_to = std::min(m_to, number);
    if (m_listener == nullptr) return;
    if (m_next <= m_to) return AskMore();
    const bool isOver = !isFound || m_asked == 0;
    if (isOver && !std::exchange(m_isTold, true)) m_listener->OnFetched();
}

}  // namespace nats
