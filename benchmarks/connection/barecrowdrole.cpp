// SPDX-License-Identifier: Apache-2.0
#include "barecrowdrole.h"

#include "pinning.h"

#include <QtCore/QMetaObject>

#include <cstdlib>
#include <utility>

namespace bench {

BareCrowdRole::BareCrowdRole(const Settings& settings)
    : RoadRole(settings), m_count(settings.Int(QStringLiteral("crowd"))) {
    YieldCores();  // as a CrowdRole does
}

void BareCrowdRole::Start() {
    m_scout = MakeClientEnd(0);
    m_scout->onReady = [] {};
    // In a thread of the library.
    m_scout->onChange = [this](int /*index*/, int /*content*/) {
        if (!std::exchange(m_hasCome, true)) QMetaObject::invokeMethod(this, [this] { Come(); });
    };
    m_scout->Open();
}

void BareCrowdRole::Come() {
    m_watch.Start();
    for (int i = 0; i < m_count; ++i) {
        m_ends.push_back(MakeClientEnd(i));
        m_ends.back()->onReady = [] {};
        m_ends.back()->onChange = [](int /*index*/, int /*content*/) {};
        m_ends.back()->Open();
    }
    TellResult(Settings().Set(QStringLiteral("slowest"), m_watch.Seconds()));
    std::_Exit(0);  // their threads may be in the middle of anything
}

}  // namespace bench
