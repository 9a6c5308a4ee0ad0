// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>

/// A round trip as it is read: what differs from the one before by as much as links vary is no news, so that
/// the number does not flicker and nothing is drawn for it every second. Main thread.
class SteadyLatency {
  public:
    /// A number is not older than this.
    static constexpr std::chrono::seconds KeepTime{10};

    /// What to show at \a now, where the last one measured is \a latest.
    std::optional<std::chrono::microseconds> Show(std::optional<std::chrono::microseconds> latest,
                                                  std::chrono::milliseconds now);

  private:
    std::optional<std::chrono::microseconds> m_shown;
    std::chrono::milliseconds m_since{};  ///< when that was measured
};
