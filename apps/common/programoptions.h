// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What a command line asks for. Each program derives its own from it.
struct ProgramOptions {
    enum class EAction {
        Run,
        Print,    ///< the text, and end
        Complain  ///< about the command line: the text says what is wrong with it, in one line
    };

    EAction action = EAction::Run;
    QString text;

    /// Does what is asked for in place of running. \return the exit code: of a complaint 2.
    int Answer() const;
};
