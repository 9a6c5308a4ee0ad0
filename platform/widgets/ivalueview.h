// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

namespace values {
class ValueBase;
}

/// What a value-bound widget adds to its WidgetBinding: how a value looks in it.
class MCS_WIDGETS_EXPORT IValueView {
  public:
    virtual ~IValueView();

    /// Shows \a value as it is now, limits and choices included; null: shows nothing. The value has passed
    /// the binding's filter. Shown contents are not edits.
    virtual void ShowValue(const values::ValueBase* value) = 0;
    /// Lets the user edit, or not.
    virtual void ShowAccess(bool mayEdit) = 0;
};
