// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace values {
class TreeItem;
}

/// What items of a tree are, as far as it matters to what shows them. Several make a set.
namespace content {

enum EContent : unsigned {
    None = 0,
    Node = 1,
    Boolean = 2,
    Integer = 4,
    Number = 8,
    Text = 16,
    Selection = 32,
    List = 64,
    AnyValue = Boolean | Integer | Number | Text | Selection | List
};

/// One of them, for an item that may be null.
unsigned Of(const values::TreeItem* item);
/// "boolean", for one of them, and "booleans" for what shows such.
QString NameOf(unsigned content);
/// "integers or numbers", for a set.
QString NamesOf(unsigned contents);

}  // namespace content
