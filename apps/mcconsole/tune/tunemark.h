// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/tuning.h>
#include <apps/pages/severity.h>

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QPalette>

#include <optional>

/// How the state of a request for a frequency looks: never by its colour alone.
struct TuneMark {
    QString word;
    std::optional<ESeverity> severity;  ///< which has an icon; none: nothing to tell
    QColor colour;                      ///< of the word, readable on the window of the palette

    static TuneMark Of(Tuning::EState state, const QPalette& palette);
};
