// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The command line of the server as a service.
namespace servicecommand {

/// \a words, the program first, as one line from which a program reads just these: blanks and quotes in them
/// are part of them.
QString Line(const QStringList& words);

}  // namespace servicecommand
