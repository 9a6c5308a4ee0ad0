// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What blanks a frequency.
struct BlankingSource {
    QString module;  ///< the name of the data module's node in the tree
    int input = 0;   ///< from 0 on
};
