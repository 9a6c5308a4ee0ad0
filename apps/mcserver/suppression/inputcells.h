// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/lamplook.h>

#include <QtCore/QStringList>

struct ModuleSettings;
struct ModuleState;

/// What stands in the columns of InputModel for an input of a module.
namespace inputcells {

/// Of a column; empty if there is none of that number.
QString TitleOf(int column);
/// What earlier versions called a module, in files that people keep: "ADAM-6051-1".
QString EarlierTitleOf(const ModuleSettings& settings);
/// \a isUnsupervised: nobody watches its frequency.
lamplook::ELamp LampOf(const ModuleState& module, int input, bool isUnsupervised);
/// Why nothing is known of the inputs of \a module; empty while it answers.
QString WhyNotLive(const ModuleState& module);
/// Of all columns but that of states.
QString TextOf(const ModuleState& module, int input, int column);
/// All that the column of states ever says.
QStringList StateTexts();
/// Whether that is another one \a now.
bool AreOther(const ModuleState& before, const ModuleState& now, int input, int column);

}  // namespace inputcells
