// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>

#include <chrono>

class ServerLog;

/// Tells in the log what somebody edited in the configuration file while the server uses it. The store keeps
/// such edits; they come into use with the next start. Main thread.
class ConfigWatch {
  public:
    /// Between two looks; an edit is taken in at the second.
    static constexpr std::chrono::milliseconds LookInterval{2000};
    static constexpr int MaxKeys = 8;  ///< that are named in one line

    /// Neither is owned; both outlive the watch.
    ConfigWatch(ServerLog& log, IClock& clock) : m_log(log), m_clock(clock) {}
    ~ConfigWatch() { Stop(); }
    ConfigWatch(const ConfigWatch&) = delete;
    ConfigWatch& operator=(const ConfigWatch&) = delete;

    /// Looks from now on.
    void Start();
    /// Looks no more.
    void Stop();
    /// Looks now.
    void Look();

  private:
    void LookAgainLater();

    ServerLog& m_log;
    IClock& m_clock;
    int m_timer = 0;
};
