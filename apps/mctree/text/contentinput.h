// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>

class IObserver;

namespace values {
class TreeItem;
}

namespace mctree {

/// Sets the content of \a item from what was typed: true/false, on/off, yes/no or 1/0; whole numbers (0x for
/// hexadecimal); decimal numbers; a text as it is; the key or text of a selection's item, or "(none)"; a
/// list of numbers separated by commas. Numbers are finite, and may carry a unit where the value has a known
/// one. \return what is wrong with \a text, in one line, and then nothing was set; empty otherwise.
QString SetFromText(values::TreeItem& item, const QString& text);

/// How a content compares with what a text asks for.
struct Comparison {
    QString error;  ///< what is wrong with the text, in one line; then the rest is of no use
    bool isEqual = false;
    std::optional<bool> isLess;  ///< of numbers only
};
/// Compares the content of \a item with what \a text, which SetFromText() takes, asks for.
Comparison CompareWithText(const values::TreeItem& item, const QString& text);

/// Whether the content of \a item is what \a text asks for. Limits may have made another one of it.
bool IsAsAsked(const values::TreeItem& item, const QString& text);

}  // namespace mctree
