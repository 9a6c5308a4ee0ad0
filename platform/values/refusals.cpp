// SPDX-License-Identifier: Apache-2.0
#include <platform/values/refusals.h>

#include <platform/app/trace.h>

#include <algorithm>

namespace values {

IRefusalListener::~IRefusalListener() = default;

void IRefusalListener::OnSubtreeRefused(const QString& /*localPath*/, const QString& path,
                                        const QString& reason) {
    OnRefused(nullptr, path, reason);
}

Refusals& Refusals::Instance() {
    static auto& instance = *new Refusals;  // never destroyed: mirrors that go later may still report
    return instance;
}

void Refusals::AddListener(IRefusalListener* listener) {
    const bool isThere = std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end();
    if (listener != nullptr && !isThere) m_listeners.push_back(listener);
}

void Refusals::RemoveListener(IRefusalListener* listener) {
    m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
}

template <class Call>
void Refusals::Tell(const Call& call) {
    const std::vector<IRefusalListener*> listeners = m_listeners;
    for (IRefusalListener* listener : listeners) {
        const bool isThere = std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end();
        if (isThere) call(*listener);
    }
}

void Refusals::Report(TreeItem* item, const QString& path, const QString& reason) {
    MCS_TRACE(QStringLiteral("'%1' refused: %2").arg(path, reason));
    Tell([&](IRefusalListener& listener) { listener.OnRefused(item, path, reason); });
}

void Refusals::ReportSubtree(const QString& localPath, const QString& path, const QString& reason) {
    MCS_TRACE(QStringLiteral("'%1' refused: %2").arg(path, reason));
    Tell([&](IRefusalListener& listener) { listener.OnSubtreeRefused(localPath, path, reason); });
}

}  // namespace values
