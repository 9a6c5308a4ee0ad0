// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/fault.h>

#include <QtCore/QString>

#include <chrono>

namespace dimodule {

/// What a line of the terminal or of a script asks for. docs/dimodule.md lists the commands.
struct Command {
    enum class EAction { None, Key, Release, States, Fault, Show, Wait, Repeat, Quit };
    static constexpr int AllModules = 0;
    static constexpr std::chrono::hours MaxWait{24};

    EAction action = EAction::None;
    int module = AllModules;  ///< from 1
    quint32 inputs = 0;       ///< of Key and Release: bit i for input i; of States: the states
    dimodule::Fault fault;
    std::chrono::milliseconds time{};  ///< of Wait

    /// What is wrong with \a line; empty if nothing is. Blank lines and comments (#) ask for nothing.
    static QString Parse(const QString& line, Command* command);
};

}  // namespace dimodule
