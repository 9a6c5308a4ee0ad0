// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QPixmap>

/// The lamps that show what an MpxORV is doing.
class MCSMpxORVStatusIcons {
  public:
    /// \a operationMode 0 is idle, whether master or not.
    const QPixmap& GetLamp(int operationMode, bool isMaster) const;

  private:
    static QPixmap MakeLamp(const char* border, const char* fill);

    // Each drawn once: there is a cell for every row.
    QPixmap m_idle = MakeLamp(".\tc #70BA70", "+\tc #007C00");
    QPixmap m_working = MakeLamp(".\tc #90EE90", "+\tc #00CD00");
    QPixmap m_master = MakeLamp(".\tc #8ECAED", "+\tc #0096ED");
};
