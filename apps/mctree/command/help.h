// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/arguments.h>

#include <QtCore/QString>

namespace mctree {

/// What --help prints: all there is, or all of one command; None for the former.
QString HelpText(ECommand topic);

}  // namespace mctree
