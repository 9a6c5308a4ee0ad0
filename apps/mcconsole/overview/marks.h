// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/frequencyband.h>
#include <apps/mcconsole/overview/frequencymark.h>
#include <apps/mcconsole/overview/frequencyusers.h>

#include <vector>

class Situation;
class Tuning;

/// What there is on the line of all frequencies. Main thread.
namespace marks {

/// The console's own MpxORV first, then the master, then what transmitters do, then the others.
std::vector<FrequencyMark> Make(const std::vector<FrequencyUsers::User>& users, const Situation& situation,
                                const Tuning& tuning);
/// What the job master receives, and what the device cannot be tuned to, as far as the server tells.
std::vector<FrequencyBand> MakeBands(const Situation& situation, const Tuning& tuning);

}  // namespace marks
