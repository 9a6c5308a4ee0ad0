// SPDX-License-Identifier: Apache-2.0
#pragma once

// Breaks the agreement between the code and its page, so that the test can be tested.
constexpr char Name[] = "nummber";    // fixed: kept
constexpr char Other[] = "number";    // fixed: changed
constexpr char Unknown[] = "knumber"; /* fixed: unlisted */
