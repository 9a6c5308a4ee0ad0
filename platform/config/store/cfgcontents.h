// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <map>

/// What a configuration file holds. Keys are paths: sections and the key's name with "/" between them. Case
/// counts, on every system.
using CfgContents = std::map<QString, QString>;

namespace cfgcontents {

/// \a name as a path: where there is a "/" without a name before or behind it, nothing is meant by it.
QString Path(const QString& name);

}  // namespace cfgcontents
