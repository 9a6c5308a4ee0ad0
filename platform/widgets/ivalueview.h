// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

namespace values {
class ValueBase;
}

/// What a value-bound widget adds to its WidgetBinding: how a value looks in it, and what an edit sets.
class MCS_WIDGETS_EXPORT IValueView {
  public:
    virtual ~IValueView();

    /// Shows \a value as it is now, limits and choices included; null: shows nothing. The value has passed
    /// the binding's filter. Shown contents are not edits: they make no signal.
    virtual void ShowValue(const values::ValueBase* value) = 0;
    /// Lets the user edit, or not.
    virtual void ShowAccess(bool mayEdit) = 0;
    /// The user typed and now is done: \a isConfirmed by Enter, else by leaving.
    /// \return whether what was typed is to be committed. If not, the value is shown again.
    virtual bool EndTyping(bool isConfirmed);
    /// Sets \a value as the user wants it. The widget may be destroyed by whoever is told.
    virtual void Commit(values::ValueBase& value);
    /// What the value is and the widget has no room for, for its tool tip.
    virtual QString HiddenText() const;
};
