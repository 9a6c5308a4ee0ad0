// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <optional>

/// One event of a server, as it is told in the value "Event" of its status and kept in its history: compact
/// JSON
/// {"n":1,"time":"...Z","severity":"notice","source":"device","who":"","code":"...","args":[...],"text":"..."}.
struct Event {
    static constexpr int MaxLength = 65536;  ///< UTF-16 code units of JSON that is read

    qint64 number = 0;  ///< from 1, rising, anew with each start of the server; 0 is none
    QDateTime time;     ///< UTC
    EEventSeverity severity = EEventSeverity::Info;
    QString source;  ///< "server", "device", "suppression", "access", "config", "MpxORV NAME"
    QString who;     ///< who caused it, by name; empty if nobody from outside did
    QString code;    ///< also one that is not known here
    QString text;    ///< the English line

    /// What it says by code; nothing where the code or one of its arguments is not known here.
    CodedText said;

    QString ToJson() const;
    /// None where \a json is no event: without a number, a time or a text.
    static std::optional<Event> FromJson(const QString& json);

    /// In the language of the application; the English line where the code is not known.
    QString Translated() const;
};
