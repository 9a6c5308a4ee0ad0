// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/modbusexport.h>

#include <QtCore/qglobal.h>

/// When to try again after errors: each error in a row doubles the delay. The first ones are short, since a
/// module that is lost tells nothing of its transmitters; the last ones spare it, and the operator.
class MCS_MODBUS_EXPORT ReconnectDelay {
  public:
    static constexpr qint64 FirstMs = 100;
    static constexpr qint64 LastMs = 10000;

    /// Times are in ms, of any clock that never goes back.
    bool IsOver(qint64 now) const { return m_delay == 0 || now - m_since >= m_delay; }
    void OnError(qint64 now);
    void OnSuccess() { m_delay = 0; }

  private:
    qint64 m_delay = 0;  ///< 0: no error
    qint64 m_since = 0;
};
