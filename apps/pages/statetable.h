// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;
class QTableView;
class QWidget;

/// Tables of states that are read and not edited. GUI thread.
namespace statetable {

constexpr int RowHeight = 22;
constexpr int LeastRows = 3;  ///< that are seen at once

/// Called \a name, and \a spoken for who does not see it. \a parent owns it.
QTableView* New(QWidget& parent, const char* name, const QString& spoken);

}  // namespace statetable
