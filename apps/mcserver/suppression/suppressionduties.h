// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/blankingguard.h>
#include <apps/mcserver/suppression/reconnectcommand.h>
#include <apps/mcserver/suppression/suppressionlog.h>

class SuppressionPlant;

/// What the server makes of the suppression, with a window or without: keeps blanked frequencies from the
/// MpxORVs, logs what becomes of the modules, and connects lost ones anew by a command. Goes before the
/// plant. Main thread.
class SuppressionDuties {
  public:
    SuppressionDuties(SuppressionPlant& plant, JobControl& jobs, ServerLog& log, IClock& clock);
    ~SuppressionDuties();
    SuppressionDuties(const SuppressionDuties&) = delete;
    SuppressionDuties& operator=(const SuppressionDuties&) = delete;

  private:
    SuppressionPlant& m_plant;
    SuppressionLog m_log;
    BlankingGuard m_guard;
    ReconnectCommand m_reconnect;
};
