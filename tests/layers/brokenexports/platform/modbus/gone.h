// SPDX-License-Identifier: Apache-2.0
// Marked, and to be found nowhere, with a constant: the check must find both.
class MCS_MODBUS_EXPORT GoneClass {
  public:
    static constexpr int Gone = 1;
};
