// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// What the store asks of the system's files. Names are whole paths. Main thread.
namespace cfgfile {

enum class EOutcome {
    Done,
    Missing,  ///< there is no such file
    NoFile,   ///< something else has its name
    Busy,     ///< another program has it at the moment: worth another try at once
    Failed    ///< it is there, and cannot be opened, read or written
};

struct Result {
    EOutcome outcome = EOutcome::Done;
    QString reason;  ///< of what is not done, in one line, for people
};

/// Reads up to \a maxBytes of \a file. Whoever replaces the file meanwhile is not held up.
Result Read(const QString& file, qint64 maxBytes, QByteArray* bytes);

/// Makes \a file hold \a bytes: writes them under the name \a next, waits until they are on the medium, and
/// renames. At any moment there is the old file or the new one. Permissions stay; one that may not be written
/// is not replaced. Whatever had the name \a next is removed, also if it fails.
Result Replace(const QString& file, const QString& next, const QByteArray& bytes);

}  // namespace cfgfile
