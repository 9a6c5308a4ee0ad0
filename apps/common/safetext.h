// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace safetext {

/// \a text on one line, with everything visible that a terminal would obey instead of showing it: control
/// characters, changes of the writing direction, halves of characters. They become \n, \t, \r, \x1b or
/// \u202e.
QString Escaped(const QString& text);

/// The same for a text in JSON, which has no such characters but inside of its strings.
QString EscapedJson(const QString& json);

}  // namespace safetext
