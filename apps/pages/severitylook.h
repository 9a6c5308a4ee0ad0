// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QPalette>

class QStyle;

/// How a severity looks: a shape and a colour, never a colour alone. GUI thread.
namespace severitylook {

/// Of texts, readable on the window of \a palette.
QColor Colour(ESeverity severity, const QPalette& palette);
/// Different in shape; as \a style has it, which may read it from a file each time.
QIcon Icon(ESeverity severity, const QStyle& style);
/// For who does not see either.
QString Word(ESeverity severity);

}  // namespace severitylook
