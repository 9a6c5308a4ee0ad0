// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace vt {

/// \a path without empty segments: "/a/b", or "/" for the root.
QString NormalisedPath(const QString& path);
/// Whether normalised \a path is normalised \a prefix or lies below it.
bool IsAtOrBelow(const QString& path, const QString& prefix);
/// \a name below normalised \a parent.
QString ChildPath(const QString& parent, const QString& name);

}  // namespace vt
