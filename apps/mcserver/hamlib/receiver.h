// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/common/codedtext.h>
#include <apps/mcserver/hamlib/receiverworker.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

/// One receiver: holds its connection, says when it is lost and back, and what it reads. Main thread.
class Receiver {
  public:
    class IListener {
      public:
        virtual ~IListener() = default;
        /// It answers; also after it was lost.
        virtual void OnReceiverReady(Receiver& receiver) = 0;
        /// It cannot be used until it is ready again. Told again if the reason is another one.
        virtual void OnReceiverLost(Receiver& receiver, const CodedText& reason) = 0;
        /// It answers, and did not take the frequency.
        virtual void OnTuningFailed(Receiver& receiver, const CodedText& reason) = 0;
        virtual void OnReading(Receiver& receiver, const RigReading& reading) = 0;
    };

    static constexpr std::chrono::milliseconds AnswerTime{3000};  ///< after which it counts as lost
    static constexpr std::chrono::milliseconds RetryTime{2000};   ///< before another connection is tried

    /// \a listener and \a clock are not owned and outlive this.
    Receiver(int channel, const QString& port, std::unique_ptr<IRig> rig, IListener& listener, IClock& clock);

    int GetChannel() const { return m_channel; }
    const QString& GetPort() const { return m_port; }
    bool IsReady() const { return m_isReady; }
    /// Whether neither an answer came yet nor the time for it is over.
    bool IsOpening() const { return m_isHeld && !m_isReady && m_lossReason.IsEmpty(); }
    const CodedText& GetLossReason() const { return m_lossReason; }
    double GetBandwidth() const { return m_bandwidth; }
    const std::vector<RigRange>& GetRanges() const { return m_ranges; }
    bool Receives(double hz) const;

    void Open();
    void Close();
    /// In place of a frequency that it has not been told yet.
    void Tune(double hz);
    /// Asks for a reading, unless one is under way.
    void Read();
    void BeginEnd() { m_worker.BeginEnd(); }

  private:
    void Ask();
    void BeginToOpen();
    void OnReport(const ReceiverWorker::Report& report);
    void Forget(const ReceiverWorker::Report& report);
    void Lose(const CodedText& reason);
    void BeReady();

    const int m_channel;
    const QString m_port;
    IListener& m_listener;
    bool m_isHeld = false;
    bool m_isReady = false;
    CodedText m_lossReason;
    double m_bandwidth = 0.0;
    std::vector<RigRange> m_ranges;
    int m_lastNumber = 0;
    int m_firstNumber = 0;  ///< of the connection that there is; earlier requests do not count
    int m_openNumber = 0;   ///< of what waits for an answer; 0: nothing does
    int m_tuneNumber = 0;
    int m_readNumber = 0;
    ClockTimer m_answerTimer;
    ClockTimer m_retryTimer;
    QObject m_context;  ///< in whose thread reports are heard
    ReceiverWorker m_worker;
};
