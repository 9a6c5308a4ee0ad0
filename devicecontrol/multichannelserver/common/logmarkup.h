// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What of a log message may be shown as the HTML that it is. Anybody who may log chooses its text.
namespace logmarkup {

/// Whether \a html costs no more than its length suggests and asks for nothing from outside: only well-formed
/// tags that format text, no tables, images, style sheets or large numbers.
bool IsHarmless(const QString& html);

}  // namespace logmarkup
