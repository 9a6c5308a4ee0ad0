// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/suppression/recoverywriter.h>

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <chrono>
#include <vector>

class ServerLog;
class SuppressionPlant;
class SuppressionRecovery;

/// Has what people enter for the suppression written to the recovery file, once per change, and says so if
/// that fails, and when it works again. Goes before the plant does; main thread.
class SuppressionRecorder : public QObject {
    Q_OBJECT

  public:
    /// After a failure, until it is tried again.
    static constexpr std::chrono::milliseconds RetryInterval{10000};

    /// None is owned, and all outlive it. \a recovery has begun.
    SuppressionRecorder(SuppressionPlant& plant, const SuppressionRecovery& recovery, ServerLog& log,
                        IClock& clock);
    ~SuppressionRecorder() override;

    /// Why what was entered cannot be kept by saving either, as far as is known: what keeps the recovery file
    /// from being written is beside the configuration. Empty if nothing does.
    QString GetObstacleOfSaving() const;

  Q_SIGNALS:
    /// Why what is entered would be lost with the process; empty if it would not be any more.
    void SignalProblem(const QString& problem);

  private:
    void Look();
    void Write();
    void OnWritten(const QString& problem);

    SuppressionPlant& m_plant;
    const SuppressionRecovery& m_recovery;
    ServerLog& m_log;
    ClockTimer m_look;
    ClockTimer m_retry;
    std::vector<ModuleSettings> m_last;  ///< that are written, or in the configuration
    QString m_problem;
    RecoveryWriter m_writer;
};
