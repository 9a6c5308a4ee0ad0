// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/natsthreads.h>

#include <thread>
#include <utility>

namespace nats {

NatsThreads& NatsThreads::Instance() {
    static auto& threads = *new NatsThreads;  // never destroyed: a thread may end after all else
    return threads;
}

void NatsThreads::Run(std::function<void()> work) {
    if (!m_applicationEnd)
        m_applicationEnd.emplace([this] {
            WaitForAll();
            m_applicationEnd.reset();
        });
    {
        const std::lock_guard lock(m_mutex);
        ++m_count;
    }
    std::thread([this, work = std::move(work)]() mutable {
        work();
        work = nullptr;  // with what it holds
        const std::lock_guard lock(m_mutex);
        --m_count;
        m_hasEnded.notify_all();
    }).detach();
}

void NatsThreads::WaitForAll() {
    std::unique_lock lock(m_mutex);
    m_hasEnded.wait_for(lock, Patience, [this] { return m_count == 0; });
}

}  // namespace nats
