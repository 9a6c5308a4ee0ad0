// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/faultproxy.h>

#include <platform/vtclient/channel/socketcalls.h>

#include <QtNetwork/QHostAddress>

#include <algorithm>

FaultProxy::FaultProxy(int target) : m_target(target) {
    listen(QHostAddress(QHostAddress::LocalHost));
}

FaultProxy::~FaultProxy() = default;

void FaultProxy::SetFaults(EDirection direction, const Faults& faults) {
    m_faults[static_cast<int>(direction)] = faults;
    for (const auto& link : m_links)
        link->SetFaults(direction, faults);
}

void FaultProxy::SetFaults(const Faults& both) {
    SetFaults(EDirection::ToServer, both);
    SetFaults(EDirection::ToClient, both);
}

void FaultProxy::Cut() {
    while (!m_links.empty())
        m_links.front()->Cut();
}

void FaultProxy::CutNext(EDirection direction, qint64 bytes, int count) {
    m_cutDirection = direction;
    m_cutAfter = bytes;
    m_cutsLeft = count;
}

void FaultProxy::Heal() {
    m_cutsLeft = 0;
    SetFaults(Faults());
    for (const auto& link : m_links)
        link->CutAfter(m_cutDirection, std::numeric_limits<qint64>::max());
}

qint64 FaultProxy::CountBytes(EDirection direction) const {
    qint64 bytes = m_bytes[static_cast<int>(direction)];
    for (const auto& link : m_links)
        bytes += link->CountBytes(direction);
    return bytes;
}

void FaultProxy::incomingConnection(qintptr descriptor) {
    vt::KeepFromChildren(descriptor);
    ++m_accepted;
    const auto forget = [this](FaultLink* link) { Forget(link); };
    m_links.push_back(std::make_unique<FaultLink>(descriptor, m_faults, forget));
    FaultLink& link = *m_links.back();
    if (m_cutsLeft != 0) {
        --m_cutsLeft;
        if (m_cutAfter == 0) return link.Cut();
        link.CutAfter(m_cutDirection, m_cutAfter);
    }
    link.Start(m_target);
}

// It may be its own signal that led here.
void FaultProxy::Forget(FaultLink* link) {
    const auto isIt = [link](const auto& other) { return other.get() == link; };
    const auto found = std::find_if(m_links.begin(), m_links.end(), isIt);
    for (const EDirection direction : {EDirection::ToServer, EDirection::ToClient})
        m_bytes[static_cast<int>(direction)] += link->CountBytes(direction);
    found->release()->deleteLater();
    m_links.erase(found);
}
