// SPDX-License-Identifier: Apache-2.0
#include <apps/common/programoptions.h>

#include <apps/common/terminal.h>

namespace {

constexpr int ExitUsage = 2;

}  // namespace

int ProgramOptions::Answer() const {
    if (action == EAction::Print) return terminal::Print(text);
    return terminal::Complain(text + QStringLiteral(" (see --help)"), ExitUsage);
}
