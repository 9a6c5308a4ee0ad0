// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/options.h>

#include <QtCore/QFile>

#include <algorithm>

namespace mctree {

namespace {

constexpr int LongestTimeoutMs = 3600 * 1000;
constexpr qint64 LongestTokenFile = 4096;  // bytes

using EBelongs = Option::EBelongs;

bool ReadNumber(const QString& text, int lowest, int highest, int* number) {
    bool isNumber = false;
    *number = text.toInt(&isNumber);
    return isNumber && *number >= lowest && *number <= highest;
}

QString Connect(Arguments& arguments, const QString& value) {
    return arguments.server.Parse(value);
}

QString SetTimeout(Arguments& arguments, const QString& text) {
    int timeoutMs = 0;
    if (!ReadNumber(text, 1, LongestTimeoutMs, &timeoutMs))
        return QStringLiteral("\"%1\" is no time from 1 to %2 ms").arg(text).arg(LongestTimeoutMs);
    arguments.timeout = std::chrono::milliseconds(timeoutMs);
    return QString();
}

QString SetCount(Arguments& arguments, const QString& text) {
    if (ReadNumber(text, 1, 2147483647, &arguments.count)) return QString();
    return QStringLiteral("\"%1\" is no number of changes").arg(text);
}

QString SetCondition(Arguments& arguments, const QString& text) {
    return arguments.condition.emplace().Parse(text);
}

QString SetLinesFile(Arguments& arguments, const QString& name) {
    arguments.linesFile = name;
    return name.isEmpty() ? QStringLiteral("\"\" is no file") : QString();
}

/// The token is the first line of the file.
QString ReadToken(Arguments& arguments, const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return QStringLiteral("%1: %2").arg(name, file.errorString());
    const QByteArray line = file.readLine(LongestTokenFile + 1).trimmed();
    if (line.isEmpty()) return QStringLiteral("%1 holds no token in its first line").arg(name);
    arguments.client.token = QString::fromUtf8(line);
    return QString();
}

/// Puts the value into a text of the client's options.
template <QString VtClientOptions::*member>
QString SetText(Arguments& arguments, const QString& value) {
    arguments.client.*member = value;
    return QString();
}

/// The same for what only TLS makes use of.
template <QString VtClientOptions::*member>
QString SetFile(Arguments& arguments, const QString& value) {
    arguments.server.isEncrypted = true;
    return SetText<member>(arguments, value);
}

QString Encrypt(Arguments& arguments, const QString&) {
    arguments.server.isEncrypted = true;
    return QString();
}

QString EndAtOnce(Arguments& arguments, const QString&) {
    arguments.isRetrying = false;
    return QString();
}

QString TakeAsItStands(Arguments& arguments, const QString&) {
    arguments.reading = PathPattern::EReading::AsItStands;
    return QString();
}

/// What was looked at before all others.
QString Nothing(Arguments&, const QString&) {
    return QString();
}

template <bool Arguments::*member>
QString Switch(Arguments& arguments, const QString&) {
    arguments.*member = true;
    return QString();
}

template <ECommand command>
QString Command(Arguments& arguments, const QString&) {
    arguments.command = command;
    return QString();
}

}  // namespace

const std::vector<Option>& Option::All() {
    // clang-format off
    static const auto& options = *new std::vector<Option>{
        {"--connect",      true,  EBelongs::ToServer, Connect},
        {"-s",             true,  EBelongs::ToAll,    Nothing},
        {"--server",       true,  EBelongs::ToAll,    Nothing},
        {"--profiles",     true,  EBelongs::ToAll,    Nothing},
        {"--tls",          false, EBelongs::ToServer, Encrypt},
        {"--ca",           true,  EBelongs::ToServer, SetFile<&VtClientOptions::caFile>},
        {"--cert",         true,  EBelongs::ToServer, SetFile<&VtClientOptions::certificateFile>},
        {"--key",          true,  EBelongs::ToServer, SetFile<&VtClientOptions::privateKeyFile>},
        {"--user",         true,  EBelongs::ToServer, SetText<&VtClientOptions::user>},
        {"--token",        true,  EBelongs::ToServer, SetText<&VtClientOptions::token>},
        {"--token-file",   true,  EBelongs::ToServer, ReadToken},
        {"--timeout",      true,  EBelongs::ToServer, SetTimeout},
        {"--no-retry",     false, EBelongs::ToAll,    EndAtOnce},
        {"--json",         false, EBelongs::ToAll,    Switch<&Arguments::isJson>},
        {"--literal",      false, EBelongs::ToPaths,  TakeAsItStands},
        {"-r",             false, EBelongs::ToList,   Switch<&Arguments::isRecursive>},
        {"--recursive",    false, EBelongs::ToList,   Switch<&Arguments::isRecursive>},
        {"--wait",         true,  EBelongs::ToGet,    SetCondition},
        {"-f",             true,  EBelongs::ToSet,    SetLinesFile},
        {"--file",         true,  EBelongs::ToSet,    SetLinesFile},
        {"--count",        true,  EBelongs::ToLines,  SetCount},
        {"--changes-only", false, EBelongs::ToWatch,  Switch<&Arguments::isChangesOnly>},
        {"--follow",       false, EBelongs::ToEvents, Switch<&Arguments::isFollowing>},
        {"-h",             false, EBelongs::ToAll,    Command<ECommand::Help>},
        {"--help",         false, EBelongs::ToAll,    Command<ECommand::Help>},
        {"-V",             false, EBelongs::ToAll,    Command<ECommand::Version>},
        {"--version",      false, EBelongs::ToAll,    Command<ECommand::Version>},
    };
    // clang-format on
    return options;
}

const Option* Option::Find(const QString& name) {
    const auto& all = All();
    const auto found = std::find_if(
        all.begin(), all.end(), [&name](const Option& option) { return name == QLatin1String(option.name); });
    return found != all.end() ? &*found : nullptr;
}

bool Option::IsFor(ECommand command) const {
    switch (belongs) {
        case EBelongs::ToAll:
        case EBelongs::ToServer:
            return true;
        case EBelongs::ToList:
            return command == ECommand::List;
        case EBelongs::ToGet:
            return command == ECommand::Get;
        case EBelongs::ToSet:
            return command == ECommand::Set;
        case EBelongs::ToWatch:
            return command == ECommand::Watch;
        case EBelongs::ToPaths:
            return command != ECommand::Info && command != ECommand::Events && command != ECommand::Stations;
        case EBelongs::ToLines:
            return command == ECommand::Watch || command == ECommand::Events;
        case EBelongs::ToEvents:
            return command == ECommand::Events;
    }
    Q_UNREACHABLE();
}

QString Option::Commands() const {
    switch (belongs) {
        case EBelongs::ToList:
            return QStringLiteral("ls");
        case EBelongs::ToGet:
            return QStringLiteral("get");
        case EBelongs::ToSet:
            return QStringLiteral("set");
        case EBelongs::ToWatch:
            return QStringLiteral("watch");
        case EBelongs::ToLines:
            return QStringLiteral("watch and events");
        case EBelongs::ToEvents:
            return QStringLiteral("events");
        default:
            return QStringLiteral("paths");
    }
}

}  // namespace mctree
