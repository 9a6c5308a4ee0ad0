// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/qtcborinput.h>

#include <platform/vtclient/wire/messagereader.h>

/// Reads as vt::MessageReader does, by Qt's reader alone. What a message consists of both take from where it
/// is declared.
class QtMessageReader {
  public:
    QtMessageReader(const char* data, qint64 size) : m_input(data, size) {}

    template <class Receiver>
    bool Read(Receiver&& receiver) {
        const auto receive = [this, &receiver](const auto& message) {
            m_isRead = !vt::CarriesChanges(std::decay_t<decltype(message)>::Type);
            receiver(message);
        };
        return vt::wire::ReadMessage(m_input, receive);
    }
    bool NextChange(vt::TreeChange* change);
    const QString& Error() const { return m_input.Error(); }

  private:
    bool ReadWrapped(vt::TreeChange* change);
    bool ReadLimits(vt::TreeChange* change);

    QtCborInput m_input;
    bool m_isRead = false;  ///< to the end
};
