// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <ostream>

// Lets a failing expectation show texts as texts.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}
