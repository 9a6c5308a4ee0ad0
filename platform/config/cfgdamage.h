// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What came of a configuration file that was none.
struct CfgDamage {
    QString file;         ///< as it was asked for
    QString reason;       ///< one line of English
    QString keptAs;       ///< where what stood there is now; empty: it is still in its place
    bool isUsed = false;  ///< what the program knew before holds; else nothing, so defaults are used
};
