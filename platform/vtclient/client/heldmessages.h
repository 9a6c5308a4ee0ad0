// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <deque>
#include <utility>

namespace vt {

/// Messages of a session that have come and whose turn has not: what they say comes after something that is
/// still on another way.
class HeldMessages {
  public:
    bool IsEmpty() const { return m_messages.empty(); }
    /// False if that is too much.
    bool Keep(const char* data, qint64 size) {
        m_messages.emplace_back(data, static_cast<int>(size));
        m_bytes += static_cast<std::size_t>(size);
        return m_bytes <= vtlimits::MaxHeld;
    }
    /// The first that came; only if there is any.
    QByteArray Take() {
        QByteArray message = std::move(m_messages.front());
        m_messages.pop_front();
        m_bytes -= static_cast<std::size_t>(message.size());
        return message;
    }

  private:
    std::deque<QByteArray> m_messages;
    std::size_t m_bytes = 0;
};

}  // namespace vt
