// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>
#include <apps/mctree/text/outcome.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>

namespace mctree {

enum class ECommand { None, List, Get, Set, Watch, Info, Help, Version };

/// What the command line asks for.
struct Arguments {
    ECommand command = ECommand::None;
    QStringList paths;  ///< normalised: "/a/b", or "/" for the root
    QString value;      ///< what to set
    bool isRecursive = false;
    bool isJson = false;
    int count = 0;                            ///< changes to watch; 0: endless
    std::chrono::milliseconds timeout{5000};  ///< how long to wait for the server
    ServerAddress server = {QStringLiteral("127.0.0.1")};
    VtClientOptions client;
};

/// Reads the command line: \a words are those after the program's name, \a environmentToken is the token
/// that stands in when none is given. On an error \a arguments is of no use.
Outcome ParseArguments(const QStringList& words, const QString& environmentToken, Arguments* arguments);

}  // namespace mctree
