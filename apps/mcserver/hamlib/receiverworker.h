// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/hamlib/irig.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

/// Has a receiver do what the main thread asks, in a thread of its own: whoever asks never waits. Of each
/// kind of request one waits at most, the newest. Main thread.
///
/// A receiver may hang for as long as it likes. Whoever ends then waits for EndTime at most, and leaves the
/// thread to itself, with all that it uses.
class ReceiverWorker {
  public:
    struct Report {
        enum class EKind { Opened, Tuned, Read };
        EKind kind = EKind::Opened;
        int number = 0;  ///< of the request, as it was given
        RigOutcome outcome;
        RigReading reading;            ///< of Tuned and Read
        std::vector<RigRange> ranges;  ///< of Opened
        double bandwidth = 0.0;        ///< likewise, in Hz
    };
    /// Called by the worker's thread, and not any more once the end has begun.
    using Tell = std::function<void(const Report&)>;

    static constexpr std::chrono::milliseconds EndTime{1500};

    ReceiverWorker(std::unique_ptr<IRig> rig, Tell tell);
    ~ReceiverWorker();
    ReceiverWorker(const ReceiverWorker&) = delete;
    ReceiverWorker& operator=(const ReceiverWorker&) = delete;

    /// Makes the connection, anew if there was one. What was asked before and has not begun is dropped.
    void Open(int number);
    /// Likewise lets go of it.
    void Close();
    void Tune(int number, double hz);
    void Read(int number);
    /// The time to end counts from now on: for several workers at once.
    void BeginEnd();

  private:
    struct Shared;
    static void Run(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
    std::chrono::steady_clock::time_point m_endTime;
    bool m_isEnding = false;
};
