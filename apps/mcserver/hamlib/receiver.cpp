// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/receiver.h>

#include <algorithm>
#include <utility>

namespace {

CodedText ReasonOf(const RigOutcome& outcome) {
    switch (outcome.fault) {
        case RigOutcome::EFault::NoAnswer:
            return ECode::DeviceDoesNotAnswer;
        case RigOutcome::EFault::NoConnection:
            return ECode::NoReceiverConnection;
        case RigOutcome::EFault::Rejected:
            return {ECode::ReceiverRejects, {outcome.text}};
        case RigOutcome::EFault::None:
        case RigOutcome::EFault::Other:
            break;
    }
    return outcome.text;
}

}  // namespace

Receiver::Receiver(int channel, const QString& port, std::unique_ptr<IRig> rig, IListener& listener,
                   IClock& clock)
    : m_channel(channel),
      m_port(port),
      m_listener(listener),
      m_answerTimer(clock),
      m_retryTimer(clock),
      m_worker(std::move(rig), [this](const ReceiverWorker::Report& report) {
          // Not heard any more once the context is gone, which the worker ends before.
          QMetaObject::invokeMethod(
              &m_context, [this, report] { OnReport(report); }, Qt::QueuedConnection);
      }) {}

bool Receiver::Receives(double hz) const {
    return m_ranges.empty() || std::any_of(m_ranges.begin(), m_ranges.end(), [hz](const RigRange& range) {
               return hz >= range.from && hz <= range.to;
           });
}

void Receiver::Open() {
    if (std::exchange(m_isHeld, true)) return;
    m_lossReason = CodedText();
    BeginToOpen();
}

void Receiver::BeginToOpen() {
    m_firstNumber = m_openNumber = ++m_lastNumber;
    m_tuneNumber = m_readNumber = 0;
    m_worker.Open(m_openNumber);
    Ask();
}

void Receiver::Close() {
    if (!std::exchange(m_isHeld, false)) return;
    m_firstNumber = ++m_lastNumber;
    m_openNumber = m_tuneNumber = m_readNumber = 0;
    m_isReady = false;
    m_answerTimer.Stop();
    m_retryTimer.Stop();
    m_worker.Close();
}

void Receiver::Tune(double hz) {
    if (!m_isReady) return;
    m_tuneNumber = ++m_lastNumber;
    m_worker.Tune(m_tuneNumber, hz);
    Ask();
}

void Receiver::Read() {
    if (!m_isReady || m_readNumber != 0) return;
    m_readNumber = ++m_lastNumber;
    m_worker.Read(m_readNumber);
    Ask();
}

// The oldest request that waits decides: who asks again and again must not put the end off.
void Receiver::Ask() {
    if (m_answerTimer.IsRunning()) return;
    m_answerTimer.Start(AnswerTime, [this] { Lose(ECode::DeviceDoesNotAnswer); });
}

void Receiver::Forget(const ReceiverWorker::Report& report) {
    for (int* const number : {&m_openNumber, &m_tuneNumber, &m_readNumber})
        if (*number == report.number) *number = 0;
    m_answerTimer.Stop();
    if (m_openNumber != 0 || m_tuneNumber != 0 || m_readNumber != 0) Ask();
}

void Receiver::OnReport(const ReceiverWorker::Report& report) {
    using EKind = ReceiverWorker::Report::EKind;
    if (!m_isHeld || report.number < m_firstNumber) return;
    const bool isCurrent = report.kind != EKind::Tuned || report.number == m_tuneNumber;
    Forget(report);
    const bool isOpened = report.kind == EKind::Opened;
    if (report.outcome.IsLost() || (isOpened && !report.outcome.IsDone())) {
        m_answerTimer.Stop();
        m_retryTimer.Start(RetryTime, [this] { BeginToOpen(); });
        return Lose(ReasonOf(report.outcome));
    }
    if (isOpened) {
        m_ranges = report.ranges;
        m_bandwidth = report.bandwidth;
    }
    if (!m_isReady) return BeReady();  // it hung, and goes on
    if (!isCurrent) return;            // there is another frequency by now
    if (report.outcome.IsDone())
        m_listener.OnReading(*this, report.reading);
    else if (report.kind == EKind::Tuned)
        m_listener.OnTuningFailed(*this, ReasonOf(report.outcome));
}

void Receiver::Lose(const CodedText& reason) {
    const bool wasReady = std::exchange(m_isReady, false);
    if (!wasReady && reason == m_lossReason) return;
    m_lossReason = reason;
    m_listener.OnReceiverLost(*this, reason);
}

void Receiver::BeReady() {
    m_isReady = true;
    m_lossReason = CodedText();
    m_listener.OnReceiverReady(*this);
}
