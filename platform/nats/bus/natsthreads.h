// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/applicationend.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

namespace nats {

/// Runs what may take its time in threads of their own. The end of the application waits for them, but not
/// for long. Main thread.
class NatsThreads {
  public:
    static NatsThreads& Instance();
    NatsThreads(const NatsThreads&) = delete;
    NatsThreads& operator=(const NatsThreads&) = delete;

    void Run(std::function<void()> work);

  private:
    NatsThreads() = default;
    ~NatsThreads() = default;

    void WaitForAll();

    static constexpr std::chrono::seconds Patience{3};  ///< beyond a connection's time-out

    std::mutex m_mutex;
    std::condition_variable m_hasEnded;
    int m_count = 0;
    std::optional<ApplicationEnd> m_applicationEnd;
};

}  // namespace nats
