// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <chrono>
#include <functional>
#include <memory>

/// Lines for a stream that perhaps nobody reads: a thread of its own writes them, so that whoever has
/// something to say never waits for a reader. What waits is bounded; what does not fit is left out and
/// counted, and the count is told once there is room again. Any thread.
class LineWriter {
  public:
    /// Writes all of the bytes, however long that takes; called by the thread.
    using Write = std::function<void(const QByteArray&)>;

    static constexpr int MaxWaitingBytes = 256 * 1024;  ///< some 2,000 lines

    /// \a write may be called until the process has ended: a call that does not come back is left alone.
    explicit LineWriter(Write write);
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    /// Takes over \a line, which ends with its line end. Never waits.
    void Put(const QByteArray& line);
    /// Waits until all is written, but no longer than \a patience. Whether all is.
    bool Drain(std::chrono::milliseconds patience);

  private:
    struct Work;
    static void Run(const std::shared_ptr<Work>& work);

    std::shared_ptr<Work> m_work;  ///< of the thread too, which may outlive this
};
