// SPDX-License-Identifier: Apache-2.0
#include <apps/common/linewriter.h>

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

struct LineWriter::Work {
    explicit Work(Write writeAll) : write(std::move(writeAll)) {}

    bool IsDone() const { return waiting.isEmpty() && leftOut == 0 && !isWriting; }

    const Write write;
    std::mutex mutex;
    std::condition_variable changed;
    QByteArray waiting;
    int leftOut = 0;
    bool isWriting = false;
    bool isStarted = false;
    bool isEnding = false;
};

LineWriter::LineWriter(Write write) : m_work(std::make_shared<Work>(std::move(write))) {}

LineWriter::~LineWriter() {
    const std::lock_guard<std::mutex> lock(m_work->mutex);
    m_work->isEnding = true;
    m_work->changed.notify_all();
}

void LineWriter::Put(const QByteArray& line) {
    const std::lock_guard<std::mutex> lock(m_work->mutex);
    if (!m_work->isStarted) {
        // Detached: it may hang in a write for ever, and the process is to end nevertheless.
        try {
            std::thread(Run, m_work).detach();
            m_work->isStarted = true;
        } catch (const std::system_error&) {
            // The system has no thread to spare. The next line tries again.
        }
    }
    // While something is left out nothing overtakes the count of it.
    if (m_work->leftOut > 0 || m_work->waiting.size() + line.size() > MaxWaitingBytes)
        ++m_work->leftOut;
    else
        m_work->waiting += line;
    m_work->changed.notify_all();
}

bool LineWriter::Drain(std::chrono::milliseconds patience) {
    std::unique_lock<std::mutex> lock(m_work->mutex);
    return m_work->changed.wait_for(lock, patience, [this] { return m_work->IsDone(); });
}

void LineWriter::Run(const std::shared_ptr<Work>& work) {
    std::unique_lock<std::mutex> lock(work->mutex);
    for (;;) {
        work->changed.wait(
            lock, [&work] { return !work->waiting.isEmpty() || work->leftOut > 0 || work->isEnding; });
        if (work->waiting.isEmpty() && work->leftOut == 0) return;
        QByteArray bytes = std::exchange(work->waiting, QByteArray());
        // What waited longest is written before the lines that found no room are counted.
        if (bytes.isEmpty()) {
            const int leftOut = std::exchange(work->leftOut, 0);
            bytes = "(" + QByteArray::number(leftOut) + " left out here, since nobody read them)\n";
        }
        work->isWriting = true;
        lock.unlock();
        work->write(bytes);
        lock.lock();
        work->isWriting = false;
        work->changed.notify_all();
    }
}
