// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace mctree {

/// What the program ends with. Scripts rely on the numbers.
enum class EExitCode {
    Done = 0,
    Refused = 1,  ///< denied, not found, or the output cannot be written
    Usage = 2,    ///< the command line is wrong
    NoConnection = 3,
    TimedOut = 4  ///< what was waited for did not come about in time
};

/// How a command ended, and what is to be said about it: one line, empty where nothing is.
struct Outcome {
    EExitCode code = EExitCode::Done;
    QString message;

    bool IsDone() const { return code == EExitCode::Done; }

    /// What the server did not let us have or do at \a path, made safe for a terminal.
    static Outcome RefusedAt(const QString& path, const QString& reason);
};

}  // namespace mctree
