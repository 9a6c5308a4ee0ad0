// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/recoverywriter.h>

#include <utility>

RecoveryWriter::RecoveryWriter(Write write) : m_write(std::move(write)), m_thread([this] { Run(); }) {}

RecoveryWriter::~RecoveryWriter() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ends = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void RecoveryWriter::Put(const QByteArray& bytes) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_next = bytes;
    }
    m_wake.notify_one();
}

void RecoveryWriter::Run() {
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_ends || m_next.has_value(); });
        if (!m_next) return;
        const QByteArray bytes = *std::exchange(m_next, std::nullopt);
        lock.unlock();
        const QString problem = m_write(bytes);
        Q_EMIT SignalWritten(problem);
        lock.lock();
    }
}
