// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/consolesession.h>

/// How the connection to the server is, at one moment.
struct Connection {
    ConsoleSession::EState state = ConsoleSession::EState::Idle;
    ServerAddress server;
    QString application;  ///< what the server calls itself
    bool isEncrypted = false;
    QString problem;  ///< why there is none, as far as anybody knows
    std::optional<std::chrono::microseconds> latency;
    std::optional<std::chrono::milliseconds> silence;  ///< for how long there was no answer, while one is due

    // The console's own MpxORV.
    bool isMpxOrvUsed = true;
    bool isMpxOrvMissing = false;
    QString mpxOrvProblem;
    QString mpxOrvName;
    QString mpxOrvPath;  ///< empty while there is none

    std::optional<std::chrono::microseconds> shownLatency;  ///< for people; looked at once a second

    static Connection Of(const ConsoleSession& session) {
        return {session.GetState(),
                session.GetServer(),
                session.GetServerApplication(),
                session.IsEncrypted(),
                session.GetProblem(),
                session.GetLatency(),
                session.GetSilence(),
                session.UsesMpxOrv(),
                session.IsMpxOrvMissing(),
                session.GetMpxOrvProblem(),
                session.GetMpxOrvName(),
                session.GetMpxOrvPath(),
                std::nullopt};
    }
};
