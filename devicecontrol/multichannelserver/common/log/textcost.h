// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// About how long a text area takes to lay out a text as one line, in ns: measured, in steps that are coarse
/// and rather too long. Anybody who may log chooses the text.
namespace textcost {

/// Grows by about 150 ns for a character of the Latin, Greek or Cyrillic alphabet.
qint64 Of(const QString& text);

/// How many characters of \a text, from its start, cost no more than \a budget together; at least as many as
/// are \a leastBytes in UTF-8, if there are as many. Does not end within a character.
int LengthWithin(const QString& text, qint64 budget, int leastBytes);

/// Of how many runs \a text consists, each of which is shaped on its own.
int CountRuns(const QString& text);

}  // namespace textcost
