// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/arguments.h>

#include <apps/common/safetext.h>

#include <algorithm>
#include <array>

namespace mctree {

namespace {

constexpr int LongestPath = 4096;
constexpr int LongestName = 1024;
constexpr int LongestTimeoutMs = 3600 * 1000;

Outcome Wrong(const QString& message) {
    return {EExitCode::Usage, message};
}

/// One option: its name, whether a value follows, and what it does, returning what is wrong with the value.
struct Option {
    const char* name;
    bool takesValue;
    QString (*apply)(Arguments& arguments, const QString& value);
};

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

// clang-format off
constexpr std::array<Option, 16> Options = {{
    {"--connect", true,  Connect},
    {"--tls",     false, Encrypt},
    {"--ca",      true,  SetFile<&VtClientOptions::caFile>},
    {"--cert",    true,  SetFile<&VtClientOptions::certificateFile>},
    {"--key",     true,  SetFile<&VtClientOptions::privateKeyFile>},
    {"--user",    true,  SetText<&VtClientOptions::user>},
    {"--token",   true,  SetText<&VtClientOptions::token>},
    {"--timeout", true,  SetTimeout},
    {"--count",   true,  SetCount},
    {"--json",    false, Switch<&Arguments::isJson>},
    {"-r",        false, Switch<&Arguments::isRecursive>},
    {"--recursive", false, Switch<&Arguments::isRecursive>},
    {"-h",        false, Command<ECommand::Help>},
    {"--help",    false, Command<ECommand::Help>},
    {"-V",        false, Command<ECommand::Version>},
    {"--version", false, Command<ECommand::Version>},
}};

struct CommandWord {
    const char* name;
    ECommand command;
    int fewest;  ///< operands
    int most;
};

constexpr int Any = 256;  // as many as a session may have subscriptions
constexpr std::array<CommandWord, 6> Commands = {{
    {"ls",    ECommand::List,  0, 1},
    {"get",   ECommand::Get,   1, 1},
    {"set",   ECommand::Set,   2, 2},
    {"watch", ECommand::Watch, 1, Any},
    {"info",  ECommand::Info,  0, 0},
    {"help",  ECommand::Help,  0, 0},
}};
// clang-format on

template <class Table>
auto Find(const Table& table, const QString& name) {
    return std::find_if(table.begin(), table.end(),
                        [&name](const auto& row) { return name == QLatin1String(row.name); });
}

bool IsOption(const QString& word) {
    // "-5" and "-.5" are values to set; "-" alone is a text.
    return word.size() > 1 && word[0] == QLatin1Char('-') && !word[1].isDigit() &&
           word[1] != QLatin1Char('.');
}

/// Applies the option at \a index, which goes on to the last word that was used.
Outcome ApplyOption(const QStringList& words, int* index, Arguments* arguments) {
    const QString& word = words[*index];
    const int equals = word.startsWith(QLatin1String("--")) ? word.indexOf(QLatin1Char('=')) : -1;
    const QString name = word.left(equals);
    const auto option = Find(Options, name);
    if (option == Options.end()) return Wrong(QStringLiteral("unknown option %1").arg(name));
    QString value;
    if (equals >= 0) {
        if (!option->takesValue) return Wrong(QStringLiteral("%1 takes no value").arg(name));
        value = word.mid(equals + 1);
    } else if (option->takesValue) {
        if (++*index == words.size()) return Wrong(QStringLiteral("%1 needs a value").arg(name));
        value = words[*index];
    }
    const QString error = option->apply(*arguments, value);
    return error.isEmpty() ? Outcome() : Wrong(QStringLiteral("%1: %2").arg(name, error));
}

/// Adds \a text, normalised, to the paths.
Outcome AddPath(const QString& text, Arguments* arguments) {
    const QStringList names = text.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString path = QLatin1Char('/') + names.join(QLatin1Char('/'));
    const bool isLong = path.size() > LongestPath ||
                        std::any_of(names.begin(), names.end(),
                                    [](const QString& name) { return name.size() > LongestName; });
    if (isLong) return Wrong(QStringLiteral("a path is too long"));
    if (!arguments->paths.contains(path)) arguments->paths.append(path);
    return Outcome();
}

Outcome TakeOperands(const QStringList& operands, Arguments* arguments) {
    if (operands.isEmpty()) return Wrong(QStringLiteral("no command"));
    const auto word = Find(Commands, operands.first());
    if (word == Commands.end()) return Wrong(QStringLiteral("unknown command %1").arg(operands.first()));
    const int count = operands.size() - 1;
    const QString& name = operands.first();
    if (count < word->fewest)
        return Wrong(name + (name == QLatin1String("set") ? QStringLiteral(" needs a path and a value")
                                                          : QStringLiteral(" needs a path")));
    if (count > word->most) return Wrong(QStringLiteral("%1: too many arguments").arg(name));
    arguments->command = word->command;
    const int paths = word->command == ECommand::Set ? 1 : count;
    for (int i = 1; i <= paths; ++i)
        if (Outcome outcome = AddPath(operands[i], arguments); !outcome.IsDone()) return outcome;
    if (word->command == ECommand::List && paths == 0) arguments->paths.append(QStringLiteral("/"));
    if (word->command == ECommand::Set) arguments->value = operands[2];
    return Outcome();
}

/// What fits each other, once all is read.
Outcome Check(const Arguments& arguments) {
    if (arguments.client.certificateFile.isEmpty() != arguments.client.privateKeyFile.isEmpty())
        return Wrong(QStringLiteral("--cert and --key belong together"));
    if (arguments.isRecursive && arguments.command != ECommand::List)
        return Wrong(QStringLiteral("-r belongs to ls"));
    if (arguments.count > 0 && arguments.command != ECommand::Watch)
        return Wrong(QStringLiteral("--count belongs to watch"));
    return Outcome();
}

}  // namespace

Outcome ParseArguments(const QStringList& words, const QString& environmentToken, Arguments* arguments) {
    *arguments = Arguments();
    arguments->client.token = environmentToken;
    QStringList operands;
    for (int i = 0; i < words.size(); ++i) {
        if (words[i] == QLatin1String("--")) {
            operands += words.mid(i + 1);
            break;
        }
        if (!IsOption(words[i])) {
            operands.append(words[i]);
            continue;
        }
        if (Outcome outcome = ApplyOption(words, &i, arguments); !outcome.IsDone()) {
            outcome.message = safetext::Escaped(outcome.message);
            return outcome;
        }
        if (arguments->command != ECommand::None) return Outcome();  // asked for help
    }
    Outcome outcome = TakeOperands(operands, arguments);
    if (outcome.IsDone()) outcome = Check(*arguments);
    outcome.message = safetext::Escaped(outcome.message);
    arguments->client.connectTimeout = arguments->timeout;
    return outcome;
}

}  // namespace mctree
