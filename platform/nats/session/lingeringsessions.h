// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/applicationend.h>

#include <QtCore/QtGlobal>

#include <memory>
#include <optional>
#include <vector>

namespace nats {

class NatsSession;

/// Sessions that were closed at this end and still have to say something, or to hear that it was read. Main
/// thread.
class LingeringSessions {
  public:
    static LingeringSessions& Instance();
    LingeringSessions(const LingeringSessions&) = delete;
    LingeringSessions& operator=(const LingeringSessions&) = delete;

    /// Keeps \a session until it is gone, for some time at most. False if there are too many.
    bool Keep(const std::shared_ptr<NatsSession>& session);
    void Release(const std::shared_ptr<NatsSession>& session);

  private:
    void LookLater(NatsSession* session, quint64 consumed, int looks);

    LingeringSessions() = default;
    ~LingeringSessions() = default;

    std::vector<std::shared_ptr<NatsSession>> m_sessions;
    std::optional<ApplicationEnd> m_applicationEnd;
};

}  // namespace nats
