// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QString>

#include <vector>

class DataModule;
class ICfg;

/// The list of data modules in the section "GTS" of the configuration.
namespace gtsconfig {

/// More modules than this are not loaded: each has a thread.
constexpr int MaxModules = 1024;

/// What the section of one module says.
struct Entry {
    int index = -1;
    QString type;
    QString address;
    int pollInterval = 0;  ///< ms
    QString section;       ///< its name, below "GTS"
};

/// The usable entries of \a gts, in their order. Incomplete ones are left out silently. An index that an
/// earlier entry has is replaced by the lowest that is free, with a trace: two modules cannot share what they
/// publish, and neither may be lost.
MCS_COMMON_EXPORT std::vector<Entry> Load(ICfg& gts);
/// Writes \a modules, in their order, and commits them.
MCS_COMMON_EXPORT void Save(ICfg& gts, const std::vector<DataModule*>& modules);
/// The smallest index from 0 upward that is not among \a used.
MCS_COMMON_EXPORT int LowestFreeIndex(std::vector<int> used);

}  // namespace gtsconfig
