// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace mctree {

/// What --help prints.
QString HelpText();

}  // namespace mctree
