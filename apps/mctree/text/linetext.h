// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Paths with their contents, one pair a line, as programs exchange them.
namespace mctree::linetext {

/// \a path, a tab and \a content. What would end the line or the path, and other control characters, is
/// written as "\n", "\t", "\x1b" or "\u202e", and "\" as "\\".
QString Joined(const QString& path, const QString& content);

/// A line taken apart.
struct Pair {
    QString path;
    QString content;
    QString error;  ///< what is wrong with the line, in one line; empty if nothing is
};
/// Reads what Joined() writes, and what people write: without a tab the path ends at the first blank, or
/// stands in double quotes, and a "=" may stand between both. Blanks around are not part of the content then.
Pair Split(const QString& line);
/// Whether \a line holds no pair: nothing, or a "#" first.
bool IsComment(const QString& line);

}  // namespace mctree::linetext
