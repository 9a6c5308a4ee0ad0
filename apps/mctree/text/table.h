// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/printer.h>

#include <QtCore/QString>

#include <vector>

namespace mctree {

/// One line of a listing. All texts are safe for a terminal.
struct TableRow {
    QString name;  ///< with its indentation
    QString kind;
    ShownContent content;
    bool isNode = false;
    bool isStale = false;
};

/// Prints \a rows in columns: name, kind, content and unit. Numbers with a unit stand with their last digits
/// below each other. On a terminal a content that is too long for its line is cut.
void PrintTable(const std::vector<TableRow>& rows, Printer& printer);

/// How many columns of a terminal \a text takes.
int CountColumns(const QString& text);

}  // namespace mctree
