// SPDX-License-Identifier: Apache-2.0
#include "sharedbus.h"

#include <QtCore/QTimer>

#include <algorithm>

namespace bench {

void SharedBus::Open(bool /*isPersistent*/) {
    QTimer::singleShot(0, &m_timers, [this] {
        for (IListener* const listener : std::exchange(m_listeners, {}))
            listener->OnNatsState(EState::Open, QString());
    });
}

void SharedBus::AddListener(IListener* listener) {
    m_listeners.push_back(listener);
    m_bus->AddListener(listener);
}

void SharedBus::RemoveListener(IListener* listener) {
    m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
    m_bus->RemoveListener(listener);
}

}  // namespace bench
