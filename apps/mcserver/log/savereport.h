// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

class ICfg;
class MCSConfigData;
class ServerLog;

/// Tells what became of a save of the configuration: in the log, and to whoever pushed "SaveConfig" in a
/// value of the server's own beside it, since "SaveConfig" turns false whether all was saved or not. Tells
/// also what the file and the configuration cannot hold of each other. Main thread; needs the tree.
class SaveReport : public IObserver {
  public:
    /// Neither is owned; both outlive the report.
    SaveReport(const MCSConfigData& config, ServerLog& log);

    /// From now on. \a cfg is what the configuration was read from just now; it is not owned and outlives the
    /// report. Tells what it holds that is not used as it stands there.
    void Begin(ICfg& cfg);
    /// Tells that all is saved and with which exception, or why not: \a problem. Every time.
    void Answer(const QString& problem);
    /// Tells in the log why all is not saved; nothing if \a problem is empty.
    void LogFailure(const QString& problem);

    /// What stands beside "SaveConfig".
    static QLatin1String AnswerName() { return QLatin1String("SaveConfigAnswer"); }

    void Update(Observable* source, TChangeCode code) override;

  private:
    void TellWhatIsNotUsed(const QString& key, double used);
    /// The frequency that holds and comes back from the file as another; nothing if it is kept.
    CodedText WhatIsNotKept() const;

    const MCSConfigData& m_config;
    ServerLog& m_log;
    ICfg* m_cfg = nullptr;  ///< null until begun
    Observation<values::Value<QString>> m_pAnswer;
    Observation<values::ValueNumeric<double>> m_pFrequency;
    Observation<values::ValueSelection> m_pScanAveragingTime;
};
