// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionrecorder.h>

#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>

#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <utility>

SuppressionRecorder::SuppressionRecorder(SuppressionPlant& plant, const SuppressionRecovery& recovery,
                                         ServerLog& log, IClock& clock)
    : m_plant(plant),
      m_recovery(recovery),
      m_log(log),
      m_look(clock),
      m_retry(clock),
      m_last(plant.GetSettings()),
      m_writer([&recovery](const QByteArray& bytes) { return recovery.Write(bytes); }) {
    connect(&m_writer, &RecoveryWriter::SignalWritten, this, &SuppressionRecorder::OnWritten);
    // An operation sets several things in a row, and only what they are at last is worth a file.
    connect(&m_plant, &SuppressionPlant::SignalSettingsChanged, this, [this] {
        if (!m_look.IsRunning()) m_look.Start(std::chrono::milliseconds(0), [this] { Look(); });
    });
}

/// What was entered in the last moment may come before a save that fails.
SuppressionRecorder::~SuppressionRecorder() {
    Look();
}

/// A file that is in the way of the other one is in nobody else's way.
QString SuppressionRecorder::GetObstacleOfSaving() const {
    const bool isInTheWay = m_recovery.GetReport().outcome == SuppressionRecovery::EOutcome::InTheWay;
    return isInTheWay ? QString() : m_problem;
}

void SuppressionRecorder::Look() {
    std::vector<ModuleSettings> settings = m_plant.GetSettings();
    if (settings == m_last) return;
    m_last = std::move(settings);
    Write();
}

void SuppressionRecorder::Write() {
    m_retry.Stop();
    m_writer.Put(m_recovery.ToBytes(m_last));
}

void SuppressionRecorder::OnWritten(const QString& problem) {
    if (!problem.isEmpty()) m_retry.Start(RetryInterval, [this] { Write(); });
    if (std::exchange(m_problem, problem) == problem) return;
    m_log.Write(problem.isEmpty() ? CodedText(ECode::EntriesAreSafe)
                                  : CodedText(ECode::EntriesWouldBeLost, {problem}));
    Q_EMIT SignalProblem(problem);
}
