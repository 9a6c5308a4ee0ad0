// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The standard streams of a program for the command line. Main thread.
namespace terminal {

/// Makes the standard streams usable, whatever the program was started with: a stream that is closed goes
/// nowhere (else the next file or connection would take its number), a write to a pipe that nobody reads is
/// an error and not the end of the process. Texts are UTF-8 in both directions. Call it first.
void Prepare();

bool IsOutputTerminal();
/// Whether the output is a terminal that shows colours, and the user (NO_COLOR) has nothing against them.
bool TakesColour();
/// Columns of the terminal that the output is; 0 where it is none, or does not tell.
int GetWidth();

/// Writes all of \a bytes to the standard output, however long that takes. False if it cannot, with the
/// reason in one line in \a error; without a reason if only the reader has gone.
bool WriteOutput(const QByteArray& bytes, QString* error);
/// Writes \a bytes to the standard error output, where that can be done.
void WriteError(const QByteArray& bytes);

}  // namespace terminal
