// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

class ITextTranslation;
namespace values {
class ValueBase;
}

/// Values as people read them.
namespace valuetext {

/// Texts are shown as \a translation has them from now on; null: as they are. It is not owned.
MCS_WIDGETS_EXPORT void SetTranslation(const ITextTranslation* translation);

/// The content of any value, in the user's locale; empty for a selection without a current item.
MCS_WIDGETS_EXPORT QString Content(const values::ValueBase& value);
/// An item of a selection, of which \a text is the display text.
MCS_WIDGETS_EXPORT QString Item(const QString& text);
/// A reason for which something was refused.
MCS_WIDGETS_EXPORT QString Reason(const QString& text);
/// \a number with as many digits as people compare.
MCS_WIDGETS_EXPORT QString Number(double number);
/// "0 to 50" for a number with limits, otherwise empty.
MCS_WIDGETS_EXPORT QString Limits(const values::ValueBase& value);
/// \a text on one line, with at most \a length characters of it and then an ellipsis.
MCS_WIDGETS_EXPORT QString Shortened(const QString& text, int length);

}  // namespace valuetext
