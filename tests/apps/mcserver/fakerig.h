// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/hamlib/irig.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

/// What a test says about a receiver that is not there, and what was asked of it. Any thread; it may be used
/// by a worker that was left to itself.
class FakeRigState {
  public:
    void Fail(const RigOutcome& outcome) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_outcome = outcome;
    }
    void RejectTuning(bool rejects) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_rejects = rejects;
    }
    void Hang(bool hangs) {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_hangs = hangs;
        }
        m_changed.notify_all();
    }
    void SetReading(const RigReading& reading) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_reading = reading;
    }
    std::vector<double> GetTunings() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_tunings;
    }
    /// Whether a call hangs now.
    bool IsHanging() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_isHanging;
    }
    int CountOpenings() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_openings;
    }

    RigOutcome Open() {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_openings;
        return Answer(lock);
    }
    RigOutcome Tune(double hz) {
        std::unique_lock<std::mutex> lock(m_mutex);
        const RigOutcome outcome = Answer(lock);
        if (!outcome.IsDone()) return outcome;
        if (m_rejects) return {RigOutcome::EFault::Rejected, QStringLiteral("Command rejected by the rig")};
        m_tunings.push_back(hz);
        m_reading.hz = hz;
        WakeTest();
        return {};
    }
    RigOutcome Read(RigReading* reading) {
        std::unique_lock<std::mutex> lock(m_mutex);
        *reading = m_reading;
        return Answer(lock);
    }

  private:
    /// Whoever waits in the event loop looks again.
    static void WakeTest() {
        QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::User));
    }
    RigOutcome Answer(std::unique_lock<std::mutex>& lock) {
        m_isHanging = m_hangs;
        WakeTest();
        m_changed.wait(lock, [this] { return !m_hangs; });
        m_isHanging = false;
        return m_outcome;
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    RigOutcome m_outcome;
    RigReading m_reading{100e6, QStringLiteral("AM"), -20};
    std::vector<double> m_tunings;
    int m_openings = 0;
    bool m_rejects = false;
    bool m_hangs = false;
    bool m_isHanging = false;
};

/// A receiver that does as its state says. Receives 30 to 300 MHz, 8 kHz at a time.
class FakeRig : public IRig {
  public:
    explicit FakeRig(std::shared_ptr<FakeRigState> state) : m_state(std::move(state)) {}

    RigOutcome Open() override { return m_state->Open(); }
    void Close() override {}
    RigOutcome Tune(double hz) override { return m_state->Tune(hz); }
    RigOutcome Read(RigReading* reading) override { return m_state->Read(reading); }
    std::vector<RigRange> GetRanges() const override { return {{30e6, 300e6}}; }
    double GetBandwidth() const override { return 8000.0; }

  private:
    std::shared_ptr<FakeRigState> m_state;
};
