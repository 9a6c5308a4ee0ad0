// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

struct ModuleState;

/// What stands in the columns of InputModel for an input of a module.
namespace inputcells {

QString TextOf(const ModuleState& module, int input, int column);
/// All that the column of states ever says.
QStringList StateTexts();
/// Whether that is another one \a now.
bool AreOther(const ModuleState& before, const ModuleState& now, int input, int column);

}  // namespace inputcells
