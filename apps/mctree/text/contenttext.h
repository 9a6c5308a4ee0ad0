// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace values {
class TreeItem;
class ValueSelection;
}  // namespace values

namespace mctree {

/// "node", "boolean", "integer", "text", "number", "selection" or "list".
QString KindOf(const values::TreeItem& item);

/// What is shown, and typed, where nothing of a selection is selected.
QString NoSelection();

/// The shortest decimal number that means \a number exactly, without an exponent where it reads well so.
QString DecimalText(double number);

/// The content as scripts take it, raw and unscaled: "true", "30000000", "Search", "1,2.5"; nothing for a
/// node, and for a selection of which nothing is selected.
QString PlainContent(const values::TreeItem& item);

/// A content as people read it, safe for a terminal.
struct ShownContent {
    QString text;
    QString unit;  ///< empty where there is none

    QString Joined() const { return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit; }
};
ShownContent ShowContent(const values::TreeItem& item);

/// What is particular to the item, as people read it: its limits, "read-only", "every change".
QString ShowTraits(const values::TreeItem& item);
/// The items of a selection with their keys, safe for a terminal: "Idle (0), Search (3)". At most \a most of
/// them.
QString ShowItems(const values::ValueSelection& selection, int most = 32);

/// True while the content is only the last one known.
bool IsStale(const values::TreeItem& item);

}  // namespace mctree
