// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>

namespace bench {

/// Who polls all modules of the plant and knows which transmitters are keyed.
class Poller {
  public:
    using Clock = std::chrono::steady_clock;

    Poller() = default;
    virtual ~Poller() = default;
    Poller(const Poller&) = delete;
    Poller& operator=(const Poller&) = delete;

    /// Begins to poll modules at \a port. \return whether all of them answer
    virtual bool Start(quint16 port) = 0;
    /// Waits until it is known of the module's transmitter. \a when is then when it became known.
    /// \return false if it takes too long
    virtual bool WaitUntilKnown(int module, bool isKeyed, Clock::time_point* when) = 0;
    /// What went wrong; empty if nothing did.
    virtual QString Error() const = 0;
};

}  // namespace bench
