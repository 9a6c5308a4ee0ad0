// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/blanking.h>

#include <devicecontrol/multichannelserver/common/gts/plant/blankingimpl.h>

Blanking* Blanking::m_pInstance = nullptr;

Blanking::Blanking() : m_pImpl(new BlankingImpl()) {}

Blanking::~Blanking() {
    delete m_pImpl;
}

Blanking* Blanking::Instance() {
    if (m_pInstance == nullptr) m_pInstance = new Blanking();
    return m_pInstance;
}

void Blanking::FreeInstance() {
    delete m_pInstance;  // fixed: freed-through-itself. It is called on the instance that it deletes.
    m_pInstance = nullptr;
}

void Blanking::EnableBlankingForClient(BlankingClient* client, bool enable) {
    if (m_pImpl != nullptr && client != nullptr) m_pImpl->EnableClient(client, enable);
}

bool Blanking::IsFrequencyBlanked(double frequency, BlankingClient* client) const {
    return m_pImpl != nullptr && client != nullptr && m_pImpl->IsBlanked(frequency, client);
}

std::optional<BlankingSource> Blanking::WhoBlanks(double frequency) const {
    return m_pImpl != nullptr ? m_pImpl->WhoBlanks(frequency) : std::nullopt;
}

std::vector<double> Blanking::GetBlankedFrequencies() const {
    return m_pImpl != nullptr ? m_pImpl->GetBlanked() : std::vector<double>();
}

void Blanking::Forget(BlankingClient* client) {
    if (m_pInstance != nullptr) m_pInstance->EnableBlankingForClient(client, true);
}
