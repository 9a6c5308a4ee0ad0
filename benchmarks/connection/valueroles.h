// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "role.h"

namespace bench {

/// Sets a value that has one observer, "count" times. For counting instructions: it takes no time itself.
class SetRole final : public Role {
  public:
    explicit SetRole(const Settings& settings) : Role(settings) {}
    void Start() override;
};

/// Finds values by their paths in a tree of 10,000, "count" times.
class FindRole final : public Role {
  public:
    explicit FindRole(const Settings& settings) : Role(settings) {}
    void Start() override;
};

}  // namespace bench
