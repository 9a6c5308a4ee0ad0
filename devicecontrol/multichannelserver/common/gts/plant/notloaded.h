// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <set>

class ICfg;

/// What becomes of entries of the list of data modules that could not be used.
namespace notloaded {

/// Moves the entries of \a gts that are in nobody's \a own into the section "NotLoaded" below it, with all
/// their keys and with a trace: those that its "ModuleCount" counts, and those that a list of \a count
/// modules would write over. Each keeps its name there, or gets the lowest number that is free.
void Keep(ICfg& gts, const std::set<QString>& own, int count);

}  // namespace notloaded
