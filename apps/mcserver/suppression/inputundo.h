// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <vector>

class SuppressionPlant;

/// What somebody entered into several cells of the inputs at once, and how to take it back. The modules are
/// the same ones, in the same order, before and after.
namespace inputundo {

/// How many cells are others now.
int CountCells(const std::vector<ModuleSettings>& before, const std::vector<ModuleSettings>& after);
/// The frequencies, in Hz, that stood at an input before and stand at none now, ascending.
std::vector<double> FindCleared(const std::vector<ModuleSettings>& before,
                                const std::vector<ModuleSettings>& after);
/// Gives these cells in \a plant their contents of \a before, but those that somebody has changed since.
void TakeBack(SuppressionPlant& plant, const std::vector<ModuleSettings>& before,
              const std::vector<ModuleSettings>& after);

}  // namespace inputundo
