// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// The program's output and its complaints: whole lines, out at once, so that whoever reads them through a
/// pipe is up to date.
namespace standardstreams {

/// \a text as it is, for help.
void Print(const QString& text);
void PrintLine(const QString& line);
/// "mcserver: " and \a line to the stream for errors.
void Complain(const QString& line);

}  // namespace standardstreams
