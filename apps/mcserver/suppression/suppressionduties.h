// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/blankingguard.h>
#include <apps/mcserver/suppression/modulechanges.h>
#include <apps/mcserver/suppression/reconnectcommand.h>
#include <apps/mcserver/suppression/suppressionlog.h>
#include <apps/mcserver/suppression/suppressionrecorder.h>
#include <apps/mcserver/suppression/suppressionstatus.h>

class SuppressionPlant;

/// What the server makes of the suppression, with a window or without: keeps blanked frequencies from the
/// MpxORVs, shows in the status what holds, logs what becomes of the modules, connects lost ones anew by a
/// command, and keeps what people enter in case the server is killed. Goes before the plant. Main thread.
class SuppressionDuties {
  public:
    SuppressionDuties(SuppressionPlant& plant, const SuppressionRecovery& recovery, JobControl& jobs,
                      ServerLog& log, IClock& clock);
    ~SuppressionDuties();
    SuppressionDuties(const SuppressionDuties&) = delete;
    SuppressionDuties& operator=(const SuppressionDuties&) = delete;

    const SuppressionRecorder& GetRecorder() const { return m_recorder; }

  private:
    SuppressionPlant& m_plant;
    SuppressionLog m_log;
    ModuleChanges m_changes;
    SuppressionStatus m_status;
    BlankingGuard m_guard;
    ReconnectCommand m_reconnect;
    SuppressionRecorder m_recorder;
};
