// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// A whole file that a program keeps for itself, beside its configuration, and that outlives a killed process
/// as the configuration does. Names are whole paths. Any thread.
class MCS_PLATFORM_EXPORT PrivateFile {
  public:
    PrivateFile() = delete;

    enum class EOutcome { Done, Missing, Failed };
    /// What became of it.
    struct Result {
        EOutcome outcome = EOutcome::Done;
        QString reason;  ///< of what is not done, in one line, for people
    };

    /// Reads up to \a maxBytes of \a file.
    static Result Read(const QString& file, qint64 maxBytes, QByteArray* bytes);
    /// Makes \a file hold \a bytes, once they are on the medium: at any moment there is the old file or the
    /// new one. A new one is the user's own (0600 where there are such permissions).
    static Result Replace(const QString& file, const QByteArray& bytes);
    /// Renames \a file to a name beside it that is free, which is put into \a aside.
    static Result PutAside(const QString& file, QString* aside);
    /// Removes \a file, which may be missing, and what a killed process left of the next one.
    static Result Remove(const QString& file);
};
