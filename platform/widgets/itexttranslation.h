// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/value.h>

#include <QtCore/QString>

/// What a program knows of contents that are texts, so that widgets can show them in the language of its
/// user. GUI thread.
class ITextTranslation {
  public:
    virtual ~ITextTranslation() = default;

    /// The content of \a value as people read it.
    virtual QString Content(const values::Value<QString>& value) const = 0;
    /// The same of an item of a selection, of which \a text is the display text.
    virtual QString Item(const QString& text) const = 0;
    /// The same of a reason for which something was refused.
    virtual QString Reason(const QString& text) const = 0;
};
