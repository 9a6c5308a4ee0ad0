// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>
#include <apps/mctree/mirror/session.h>
#include <apps/mctree/text/condition.h>
#include <apps/mctree/text/outcome.h>
#include <apps/mctree/text/pathpattern.h>
#include <platform/nats/natsaddress.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <optional>
#include <vector>

namespace mctree {

enum class ECommand { None, List, Get, Set, Watch, Hold, Info, Events, Stations, Help, Version };

/// What the command line asks for.
struct Arguments {
    ECommand command = ECommand::None;
    ECommand topic = ECommand::None;  ///< of the help
    std::vector<PathPattern> patterns;
    PathPattern::EReading reading = PathPattern::EReading::Globs;
    QString value;                       ///< what to set
    bool isValueFromInput = false;       ///< the standard input is
    QString linesFile;                   ///< in which stands what to set; "-": the standard input
    std::optional<Condition> condition;  ///< to wait for
    bool isRecursive = false;
    bool isJson = false;
    bool isChangesOnly = false;
    bool isFollowing = false;
    bool isRetrying = true;
    int count = 0;  ///< changes to watch, or events; 0: endless, or as many as is usual
    std::optional<std::chrono::milliseconds> timeout;  ///< if it was given
    ServerAddress server = {QStringLiteral("127.0.0.1")};
    VtClientOptions client;
    nats::NatsAddress stations;  ///< where to look for stations
    bool isNatsEncrypted = false;

    /// How long to wait for the server.
    std::chrono::milliseconds Timeout() const { return timeout.value_or(std::chrono::milliseconds(5000)); }
    /// How the session is to bear that there is no connection: a command that lasts waits for it.
    Session::ERetry Retry() const;
};

/// What comes from elsewhere than the command line.
struct Surroundings {
    QString token;         ///< that stands in when none is given
    QString profilesFile;  ///< in which servers are described, unless another one is given
};

/// Reads the command line: \a words are those after the program's name. On an error \a arguments is of no
/// use.
Outcome ParseArguments(const QStringList& words, const Surroundings& surroundings, Arguments* arguments);

/// The words of all commands.
QStringList CommandNames();

}  // namespace mctree
