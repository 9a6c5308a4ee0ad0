// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <chrono>
#include <optional>

/// What a client tells those who wait for its server. Clients of VtClientCenter are this too: ask by
/// dynamic_cast. Main thread.
class MCS_CONNECTION_EXPORT IVtRetry {
  public:
    virtual ~IVtRetry();

    /// How long until the next attempt to connect; none while connected, and while an attempt is under way.
    virtual std::optional<std::chrono::milliseconds> GetTimeToRetry() const = 0;
    /// Makes the next attempt now, if it would be made later. The pauses between attempts stay as they are.
    virtual void RetryNow() = 0;
    /// How long nothing was heard from the server although a ping waits for its answer; none while none
    /// waits.
    virtual std::optional<std::chrono::milliseconds> GetSilence() const = 0;

  protected:
    IVtRetry() = default;
    IVtRetry(const IVtRetry&) = default;
    IVtRetry& operator=(const IVtRetry&) = default;
};
