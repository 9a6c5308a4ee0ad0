// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/qtcborinput.h>

#include <platform/vtclient/wire/message.h>

/// Reads as vt::MessageReader does, by Qt's reader alone.
class QtMessageReader {
  public:
    QtMessageReader(const char* data, qint64 size) : m_input(data, size) {}

    bool ReadHeader(vt::Message* message);
    bool NextChange(vt::TreeChange* change);
    const QString& Error() const { return m_input.Error(); }

  private:
    bool ReadFields(vt::Message* message);
    bool ReadAnswer(vt::Message* message);
    bool ReadWrapped(vt::TreeChange* change);
    bool ReadLimits(vt::TreeChange* change);

    QtCborInput m_input;
    bool m_isRead = false;  ///< to the end
};
