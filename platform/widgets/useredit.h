// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

/// While one lives, on the stack, what changes is what the user of this process does at a window of it, and
/// not somebody elsewhere or the program itself. Edits of bound widgets have one. GUI thread.
class MCS_WIDGETS_EXPORT UserEdit {
  public:
    UserEdit();
    ~UserEdit();
    UserEdit(const UserEdit&) = delete;
    UserEdit& operator=(const UserEdit&) = delete;

    static bool IsUnderWay();  ///< whether one lives
};
