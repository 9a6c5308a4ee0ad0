// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <functional>

/// Does something when the application object goes that is there, or comes next: while sockets and timers can
/// still be used. For what may outlive it, which a static can. A process that ends in another way, with
/// exit() above all, does nothing. Main thread.
class MCS_PLATFORM_EXPORT ApplicationEnd {
  public:
    /// \a end is called once, the one made last before all others. It may make and destroy others; those that
    /// it makes are called too.
    explicit ApplicationEnd(std::function<void()> end);
    ~ApplicationEnd();
    ApplicationEnd(const ApplicationEnd&) = delete;
    ApplicationEnd& operator=(const ApplicationEnd&) = delete;

  private:
    static void CallAll();

    std::function<void()> m_end;
};
