// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QString>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <deque>

namespace vt {

/// Those who have connected and not yet shown who they are. Whoever means it does so at once: where room is
/// short, the host that has the most of them gives way first, and of its own the one that has waited longest,
/// so that nobody keeps others out by connecting. Main thread.
template <class Guest>
class WaitingRoom {
  public:
    /// \a guest comes from \a host; it leaves before it is destroyed.
    void Enter(Guest* guest, const QString& host) {
        m_guests.push_back({guest, host, QElapsedTimer()});
        m_guests.back().since.start();
        ++m_countByHost[host];
    }
    /// Does nothing for one who is not there.
    void Leave(const Guest* guest) {
        const auto found = std::find_if(m_guests.begin(), m_guests.end(),
                                        [guest](const Place& place) { return place.guest == guest; });
        if (found == m_guests.end()) return;
        const auto count = m_countByHost.find(found->host);
        if (--*count == 0) m_countByHost.erase(count);
        m_guests.erase(found);
    }
    bool Has(const Guest* guest) const {
        return std::any_of(m_guests.begin(), m_guests.end(),
                           [guest](const Place& place) { return place.guest == guest; });
    }
    std::size_t Count() const { return m_guests.size(); }

    /// Who has to leave first. Null if nobody is there.
    Guest* First() const {
        const auto first = FindFirst();
        return first == m_guests.end() ? nullptr : first->guest;
    }
    /// For how long that one has been there.
    std::chrono::milliseconds FirstHasWaited() const {
        const auto first = FindFirst();
        return std::chrono::milliseconds(first == m_guests.end() ? 0 : first->since.elapsed());
    }

  private:
    struct Place {
        Guest* guest;
        QString host;
        QElapsedTimer since;
    };

    auto FindFirst() const {
        const auto most = std::max_element(m_countByHost.begin(), m_countByHost.end());
        return std::find_if(m_guests.begin(), m_guests.end(),
                            [&most](const Place& place) { return place.host == most.key(); });
    }

    std::deque<Place> m_guests;  ///< in the order in which they came
    QHash<QString, int> m_countByHost;
};

}  // namespace vt
