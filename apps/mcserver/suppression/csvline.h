// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// One line of a table as text. Cells in double quotes may hold anything but an end of line.
namespace csvline {

/// \a cells with commas between them, and the end of the line.
QString Join(const QStringList& cells);
/// What separates the cells of \a line: the first comma, semicolon or tab in it; a comma if there is none.
QChar FindSeparator(const QString& line);
QStringList Split(const QString& line, QChar separator);

}  // namespace csvline
