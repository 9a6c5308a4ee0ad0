// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Small text files that people write by hand, one statement per line. Any thread.
class MCS_PLATFORM_EXPORT TextFile {
  public:
    TextFile() = delete;

    static constexpr qint64 MaxBytes = 1 << 20;  ///< far more than anybody writes by hand
    static constexpr int MaxLineLength = 4096;

    /// Reads \a path. False with the reason in one line in \a error: nothing that can be read, too large, or
    /// text that SplitLines refuses.
    static bool ReadLines(const QString& path, QStringList* lines, QString* error);
    /// The lines of \a bytes, which is called \a name in errors, without what ends them. False for bytes that
    /// are no UTF-8 text, control characters and endless lines.
    static bool SplitLines(const QByteArray& bytes, const QString& name, QStringList* lines, QString* error);
    /// The words of \a line, which are separated by blanks; one in double quotes may hold blanks, or nothing.
    /// A word that starts with "#" starts a comment. False if quotes are not closed.
    static bool SplitWords(const QString& line, QStringList* words);
};
