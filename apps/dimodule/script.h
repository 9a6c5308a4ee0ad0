// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/command.h>

#include <QtCore/QByteArray>

#include <vector>

namespace dimodule {

/// Commands that are carried out one after the other, as a file holds them.
struct Script {
    static constexpr int MaxCommands = 10000;

    std::vector<Command> commands;

    /// Reads \a path. False with the reason in \a error, which names file and line.
    bool Load(const QString& path, QString* error);
    /// The same for \a text, which is called \a name in errors.
    bool Parse(const QByteArray& text, const QString& name, QString* error);
};

}  // namespace dimodule
