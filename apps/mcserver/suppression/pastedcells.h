// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// A text of the clipboard as cells of a table. Spreadsheets have tabs between them; people also copy from
/// files, which have semicolons or commas.
namespace pastedcells {

struct Content {
    std::vector<QStringList> lines;  ///< of the same number of cells each, unless they have tabs
    QString problem;                 ///< empty: \a lines are all of it
};

/// Its lines, whatever ends them.
QStringList LinesOf(const QString& text);
Content Read(const QStringList& lines);
/// One cell a line unless there are tabs: for columns whose contents have commas themselves.
Content ReadColumn(const QStringList& lines);

}  // namespace pastedcells
