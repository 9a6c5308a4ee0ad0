// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

namespace values {
class ValueBase;
}

/// Values as people read them.
namespace valuetext {

/// The content of any value, in the user's locale; empty for a selection without a current item.
MCS_WIDGETS_EXPORT QString Content(const values::ValueBase& value);
/// \a number with as many digits as people compare.
MCS_WIDGETS_EXPORT QString Number(double number);
/// "0 to 50" for a number with limits, otherwise empty.
MCS_WIDGETS_EXPORT QString Limits(const values::ValueBase& value);
/// \a text on one line, with at most \a length characters of it and then an ellipsis.
MCS_WIDGETS_EXPORT QString Shortened(const QString& text, int length);

}  // namespace valuetext
