// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "roadrole.h"

#include <chrono>

namespace bench {

/// Sets a value, waits for the client's answer, sets it again; tells how long the round trips took.
class RoundTripServer final : public RoadRole {
  public:
    explicit RoundTripServer(const Settings& settings);
    void Start() override { m_end->Open(); }

  private:
    void TakeAnswer(int content);
    void TellTimes() const;

    std::unique_ptr<ServerEnd> m_end;
    int m_warmUp;
    int m_count;
    int m_sent = 0;
    std::chrono::steady_clock::time_point m_setAt;
    std::vector<double> m_microseconds;
};

/// Answers each change of the value with the same number.
class RoundTripClient final : public RoadRole {
  public:
    explicit RoundTripClient(const Settings& settings);
    void Start() override { m_end->Open(); }

  private:
    std::unique_ptr<ClientEnd> m_end;
};

}  // namespace bench
