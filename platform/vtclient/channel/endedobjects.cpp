// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/endedobjects.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <algorithm>

namespace vt {

namespace {

constexpr std::chrono::milliseconds SweepInterval(100);

}  // namespace

EndedObjects& EndedObjects::Instance() {
    static auto& instance =
        *new EndedObjects;  // never destroyed: statics that go later may still end something
    return instance;
}

void EndedObjects::Keep(Ended ended) {
    m_kept.push_back(std::move(ended));
    if (m_applicationEnd) return;
    m_applicationEnd.emplace([this] {
        m_kept.clear();
        m_applicationEnd.reset();
    });
    SweepAfter(std::chrono::milliseconds(0));
}

void EndedObjects::SweepAfter(std::chrono::milliseconds wait) {
    QCoreApplication* const application = QCoreApplication::instance();
    if (application != nullptr) QTimer::singleShot(wait, application, [this] { Sweep(); });
}

// The call may have opened a dialog, whose event loop leads here while the call is under way.
void EndedObjects::Sweep() {
    const auto isIdle = [](const Ended& ended) { return ended.isIdle(); };
    m_kept.erase(std::remove_if(m_kept.begin(), m_kept.end(), isIdle), m_kept.end());
    if (m_kept.empty())
        m_applicationEnd.reset();
    else
        SweepAfter(SweepInterval);
}

}  // namespace vt
