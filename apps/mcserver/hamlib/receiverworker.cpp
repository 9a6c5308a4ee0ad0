// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/receiverworker.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

/// What both threads use; the last of them frees it.
struct ReceiverWorker::Shared {
    struct Tuning {
        int number;
        double hz;
    };
    struct Task {
        bool closes = false;
        std::optional<int> open;
        std::optional<Tuning> tuning;
        std::optional<int> read;

        bool IsEmpty() const { return !closes && !open && !tuning && !read; }
    };

    std::unique_ptr<IRig> rig;  ///< the worker's own
    std::mutex mutex;           ///< of what follows
    std::condition_variable changed;
    Task task;
    Tell tell;
    bool isEnding = false;
    bool hasEnded = false;

    /// False if the end has begun.
    bool Take(Task* taken) {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return isEnding || !task.IsEmpty(); });
        if (isEnding) return false;
        *taken = std::exchange(task, Task());
        return true;
    }
    void Say(const Report& report) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!isEnding) tell(report);
    }
    /// False if there is something newer to do than what was taken before.
    bool IsCurrent() {
        const std::lock_guard<std::mutex> lock(mutex);
        return !isEnding && !task.closes && !task.open;
    }
    void CarryOut(const Task& taken) {
        if (taken.closes || taken.open) rig->Close();
        if (taken.open) DoOpen(*taken.open);
        if (taken.tuning && IsCurrent()) DoTune(*taken.tuning);
        if (taken.read && IsCurrent()) DoRead(*taken.read);
    }
    void DoOpen(int number) {
        Report report;
        report.number = number;
        report.outcome = rig->Open();
        if (report.outcome.IsDone()) {
            report.ranges = rig->GetRanges();
            report.bandwidth = rig->GetBandwidth();
        }
        Say(report);
    }
    void DoTune(const Tuning& tuning) {
        Report report;
        report.kind = Report::EKind::Tuned;
        report.number = tuning.number;
        report.reading.hz = tuning.hz;
        report.outcome = rig->Tune(tuning.hz);
        if (report.outcome.IsDone()) {
            const RigOutcome outcome = rig->Read(&report.reading);
            if (outcome.IsLost()) report.outcome = outcome;
        }
        Say(report);
    }
    void DoRead(int number) {
        Report report;
        report.kind = Report::EKind::Read;
        report.number = number;
        report.outcome = rig->Read(&report.reading);
        Say(report);
    }
    void Put(const std::function<void(Task&)>& change) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            change(task);
        }
        changed.notify_all();
    }
};

ReceiverWorker::ReceiverWorker(std::unique_ptr<IRig> rig, Tell tell) : m_shared(std::make_shared<Shared>()) {
    m_shared->rig = std::move(rig);
    m_shared->tell = std::move(tell);
    m_thread = std::thread([shared = m_shared] { Run(shared); });
}

void ReceiverWorker::Run(const std::shared_ptr<Shared>& shared) {
    Shared::Task task;
    while (shared->Take(&task))
        shared->CarryOut(task);
    shared->rig.reset();
    {
        const std::lock_guard<std::mutex> lock(shared->mutex);
        shared->hasEnded = true;
    }
    shared->changed.notify_all();
}

void ReceiverWorker::BeginEnd() {
    if (std::exchange(m_isEnding, true)) return;
    m_endTime = std::chrono::steady_clock::now() + EndTime;
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        m_shared->isEnding = true;
    }
    m_shared->changed.notify_all();
}

ReceiverWorker::~ReceiverWorker() {
    BeginEnd();
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    const bool hasEnded =
        m_shared->changed.wait_until(lock, m_endTime, [this] { return m_shared->hasEnded; });
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void ReceiverWorker::Open(int number) {
    m_shared->Put([number](Shared::Task& task) {
        task = Shared::Task();
        task.open = number;
    });
}

void ReceiverWorker::Close() {
    m_shared->Put([](Shared::Task& task) {
        task = Shared::Task();
        task.closes = true;
    });
}

void ReceiverWorker::Tune(int number, double hz) {
    m_shared->Put([number, hz](Shared::Task& task) { task.tuning = Shared::Tuning{number, hz}; });
}

void ReceiverWorker::Read(int number) {
    m_shared->Put([number](Shared::Task& task) { task.read = number; });
}
