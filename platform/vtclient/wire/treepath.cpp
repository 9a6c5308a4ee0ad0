// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/treepath.h>

#include <QtCore/QStringList>

namespace vt {

QString NormalisedPath(const QString& path) {
    return QLatin1Char('/') + path.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

bool IsAtOrBelow(const QString& path, const QString& prefix) {
    if (prefix.size() == 1) return true;
    return path.startsWith(prefix) &&
           (path.size() == prefix.size() || path.at(prefix.size()) == QLatin1Char('/'));
}

QString ChildPath(const QString& parent, const QString& name) {
    return parent.size() == 1 ? parent + name : parent + QLatin1Char('/') + name;
}

}  // namespace vt
