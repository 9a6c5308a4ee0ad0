// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/cnats.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace nats {

/// Messages that were handled. The client library destroys messages in a thread of its own, which it wakes
/// for each of them: that thread would compete with the answer. So they are let go many at a time. Main
/// thread.
class SpentMessages {
  public:
    SpentMessages() { m_messages.reserve(MaxMessages); }

    void Add(CnatsPointer<natsMsg> message) {
        m_bytes += natsMsg_GetDataLength(message.get());
        m_messages.push_back(std::move(message));
        if (m_messages.size() >= MaxMessages || m_bytes >= MaxBytes) Clear();
    }
    void Clear() {
        m_messages.clear();
        m_bytes = 0;
    }

  private:
    static constexpr std::size_t MaxMessages = 64;
    static constexpr int MaxBytes = 64 * 1024;

    std::vector<CnatsPointer<natsMsg>> m_messages;
    int m_bytes = 0;
};

}  // namespace nats
