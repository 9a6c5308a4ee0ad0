// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QString>

#include <set>
#include <vector>

class ICfg;
class PlantModule;

/// The list of data modules in the section "GTS" of the configuration.
namespace gtsconfig {

/// More entries than this are not read: no site has a hundredth of it, and a number in a file is no reason to
/// look for two billion.
constexpr int MaxModules = 65536;

/// What the section of one module says.
struct Entry {
    ModuleSettings settings;
    QString section;  ///< its name, below "GTS"
};

/// The usable entries of \a gts, in their order. Incomplete ones are left out silently. Where an earlier
/// entry has both type and index, the index is replaced by the lowest that no module has, with a trace: two
/// modules cannot share what they publish, and neither may be lost.
std::vector<Entry> Load(ICfg& gts);
/// Writes \a modules, in their order, and commits them. \a own: the sections that were loaded or saved
/// before, and then those that are saved; entries of others are kept aside.
void Save(ICfg& gts, const std::vector<PlantModule*>& modules, std::set<QString>* own);
/// The smallest index from 0 upward that is not among \a used.
int LowestFreeIndex(std::vector<int> used);

}  // namespace gtsconfig
