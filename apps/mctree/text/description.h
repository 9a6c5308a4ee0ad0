// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace values {
class TreeItem;
}

namespace mctree {

/// The content alone, as its own type: {"content": ...}, with "key" beside it for a selection. Numbers count
/// the unit, unscaled. Nothing for a node.
QJsonObject DescribeContent(const values::TreeItem& item);

/// All that is known of \a item, which the server has at \a path, but not what is below it: path, kind,
/// content, unit, limits, items, and what is out of the ordinary (stale, read-only, every change delivered).
QJsonObject Describe(const values::TreeItem& item, const QString& path);

/// What the content of \a item counts, such as "Hz"; empty where it has no unit. Texts and selections have
/// none, whatever their name.
QString UnitOf(const values::TreeItem& item);

/// \a object on one line, safe for a terminal.
QString ToLine(const QJsonObject& object);

}  // namespace mctree
