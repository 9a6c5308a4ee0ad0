// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivthistory.h>
#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

namespace vt {

/// What one client has asked of the history and not been answered yet: so many questions at once, and answers
/// at such a rate, that whatever a client asks, others and its own changes notice nothing of it.
class Recalls {
  public:
    Recalls() : m_isAlive(std::make_shared<bool>(true)) {}
    ~Recalls() { *m_isAlive = false; }
    Recalls(const Recalls&) = delete;
    Recalls& operator=(const Recalls&) = delete;

    /// False, and nothing is done, if too many wait already.
    bool Add(const RecallMessage& recall);
    bool IsEmpty() const { return m_waiting.empty(); }
    /// Bytes that are kept for it.
    std::size_t HeldBytes() const;
    /// The next one that may be asked now, if any.
    std::optional<RecallMessage> Take(std::chrono::microseconds now);

    /// For an answer that may come later than the end of this.
    std::shared_ptr<const bool> IsAlive() const { return m_isAlive; }
    /// The message with \a page, in the bounds of one.
    static RecalledMessage ToMessage(quint32 req, const VtHistoryPage& page);

  private:
    std::deque<RecallMessage> m_waiting;
    std::chrono::microseconds m_fullAt{};  ///< when all answers of a burst may be given again
    std::shared_ptr<bool> m_isAlive;
};

}  // namespace vt
