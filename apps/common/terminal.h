// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <iosfwd>

/// The standard streams of a program for the command line. Main thread, except where it says otherwise.
namespace terminal {

/// Makes the standard streams usable, whatever the program was started with: a stream that is closed goes
/// nowhere (else the next file or connection would take its number), a write to a pipe that nobody reads is
/// an error and not the end of the process. Texts are UTF-8 in both directions, and what the system calls a
/// console shows and types them right whatever its code page. From then on messages of the
/// libraries come as lines of the standard error output, with everything visible in them that a terminal
/// would obey, and the end of the process waits for a moment for what is still to be written. Call it first.
void Prepare();

/// The standard input. Waiting for it on a thread keeps the process from nothing.
std::istream& GetInput();

bool IsOutputTerminal();
/// Whether the output is a terminal that shows colours, and the user (NO_COLOR) has nothing against them.
bool TakesColour();
/// Columns of the terminal that the output is; 0 where it is none, or does not tell.
int GetWidth();

/// Writes all of \a bytes to the standard output, however long that takes. False if it cannot, with the
/// reason in one line in \a error; without a reason if only the reader has gone.
bool WriteOutput(const QByteArray& bytes, QString* error);

/// Hands over whole lines for the standard output, for a program that goes on whether or not somebody reads
/// them: it never waits, and what nobody reads is left out and counted. Any thread.
void PutOutput(const QByteArray& lines);
/// The same for the standard error output.
void WriteError(const QByteArray& lines);

/// Waits for a moment for what PutOutput() and WriteError() have not written yet.
void Drain();

/// Where lines go.
enum class EStream { Output, Error };
using Sink = std::function<void(EStream stream, const QByteArray& lines)>;
/// Has what PutOutput() and WriteError() are handed written by \a sink, on threads of their own, one for each
/// stream: for a program whose streams nobody sees. Before the first line.
void SendLinesTo(Sink sink);

/// Tells in one line of the standard error output, after the program's name, what is wrong.
/// \return \a exitCode, to go on with.
int Complain(const QString& what, int exitCode);
/// Writes \a text for whoever asked for it.
/// \return the exit code of the program: 0, also if the reader of a pipe has seen enough, as `head` has, or 1
/// if it cannot be written, which is told.
int Print(const QString& text);

namespace system {
/// What Prepare() does to the streams themselves.
void PrepareStreams();
/// Gives back what was changed of a terminal that others go on using.
void RestoreStreams();
/// Writes all of \a bytes to the standard error output, however long that takes, where that can be done. Any
/// thread.
void WriteError(const QByteArray& bytes);
}  // namespace system

}  // namespace terminal
