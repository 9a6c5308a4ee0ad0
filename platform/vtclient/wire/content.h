// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include <cstdint>
#include <variant>
#include <vector>

namespace vt {

/// The kinds of item, by their number on the wire.
enum class EItemKind : std::uint8_t {
    Node = 0,
    Bool = 1,
    Int = 2,
    Text = 3,
    NumericInt = 4,
    NumericDouble = 5,
    Selection = 6,
    List = 7
};
constexpr int ItemKindCount = 8;

/// The content of a value on its way: of a selection the index of the current item (in a write: its key), or
/// nothing.
using Content = std::variant<std::monostate, bool, qint64, double, QString, QVector<double>>;

/// One choice of a selection on its way.
struct Choice {
    QString text;
    double number = 0.0;
    qint64 key = 0;
};

/// What an item is, apart from its name and place.
struct ItemDescription {
    enum EFlag : unsigned { EveryChange = 1, Stale = 2, AllFlags = 3 };

    EItemKind kind = EItemKind::Node;
    unsigned flags = 0;
    Content content;
    Content minimum;  ///< of a number with limits
    Content maximum;
    std::vector<Choice> choices;  ///< of a selection
};

}  // namespace vt
