// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Output of programs as somebody wants to read it who looks on.
namespace forpeople {

/// \a rows of "mctree get": of an event its text, and no code, whose text stands in a row of its own.
QString Rows(const QString& rows);

}  // namespace forpeople
