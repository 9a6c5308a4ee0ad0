// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/event.h>

#include <QtGui/QIcon>

#include <array>
#include <cstdint>

/// What an event comes to, for whoever looks at it: how grave it is, and whether somebody got what was asked
/// for.
enum class EEventLook : std::uint8_t {
    Told,     ///< neither good nor bad
    Done,     ///< what was asked for, or what was missing, is there
    Notice,   ///< worth to know
    Refused,  ///< somebody did not get what was asked for
    Warning,
    Alarm,
    Count
};

namespace eventlook {

EEventLook Of(const Event& event);
/// The severity, or that it was refused, in the language of the application.
QString Word(const Event& event);

/// Signs that differ in shape; room alone for what is only told, so that what stands beside is in line. They
/// are read once. GUI thread.
class Icons {
  public:
    Icons();
    const QIcon& Of(EEventLook look) const { return m_icons.at(static_cast<std::size_t>(look)); }

  private:
    std::array<QIcon, static_cast<std::size_t>(EEventLook::Count)> m_icons;
};

}  // namespace eventlook
