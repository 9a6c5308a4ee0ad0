// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/valueselection.h>

/// The current key of \a selection as one of an enumeration. Servers may send any key: one that no
/// enumeration of ints has is none, and not what is left of it in 32 bits.
template <class Enumeration>
Enumeration CurrentKeyAs(const values::ValueSelection& selection) {
    const values::SelectionKey key = selection.GetCurrentKey();
    const int number = static_cast<int>(key);
    return static_cast<Enumeration>(number == key ? number : static_cast<int>(values::ValueSelection::NoKey));
}
