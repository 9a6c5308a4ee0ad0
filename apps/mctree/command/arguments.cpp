// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/arguments.h>

#include <apps/common/safetext.h>
#include <apps/mctree/command/options.h>
#include <apps/mctree/command/profiles.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>

namespace mctree {

namespace {

/// The profile that counts if neither a profile nor an address is given.
const QLatin1String DefaultProfile("default");

Outcome Wrong(const QString& message) {
    return {EExitCode::Usage, message};
}

struct CommandWord {
    const char* name;
    ECommand command;
    int fewest;  ///< operands
    int most;
    const char* needs;
};

constexpr int Any = 200;  // a session may have 256 subscriptions
// clang-format off
constexpr std::array<CommandWord, 9> Commands = {{
    {"ls",    ECommand::List,  0, Any,     ""},
    {"get",   ECommand::Get,   1, Any,     "a path"},
    {"set",   ECommand::Set,   2, Any + 1, "a path and a value"},
    {"watch", ECommand::Watch, 1, Any,     "a path"},
    {"hold",  ECommand::Hold,  1, Any,     "a path"},
    {"info",  ECommand::Info,  0, 0,       ""},
    {"events", ECommand::Events, 0, 0,     ""},
    {"stations", ECommand::Stations, 1, 1, "nats://HOST"},
    {"help",  ECommand::Help,  0, 1,       ""},
}};
// clang-format on

const CommandWord* FindCommand(const QString& name) {
    const auto found = std::find_if(Commands.begin(), Commands.end(), [&name](const CommandWord& word) {
        return name == QLatin1String(word.name);
    });
    return found != Commands.end() ? &*found : nullptr;
}

/// An option as it was given.
struct Given {
    const Option* option;
    QString name;
    QString value;
};

/// The words, sorted.
struct Sorted {
    std::vector<Given> options;
    QStringList operands;
    int plain = 0;  ///< operands in front of "--", behind which nothing has a meaning of its own
};

bool IsOption(const QString& word) {
    // "-5" and "-.5" are values to set; "-" alone is the standard input.
    return word.size() > 1 && word[0] == QLatin1Char('-') && !word[1].isDigit() &&
           word[1] != QLatin1Char('.');
}

/// Takes the option at \a index, which goes on to the last word that was used.
Outcome TakeOption(const QStringList& words, int* index, Sorted* sorted) {
    const QString& word = words[*index];
    const int equals = word.startsWith(QLatin1String("--")) ? word.indexOf(QLatin1Char('=')) : -1;
    Given given{nullptr, word.left(equals), QString()};
    given.option = Option::Find(given.name);
    if (given.option == nullptr) return Wrong(QStringLiteral("unknown option %1").arg(given.name));
    if (equals >= 0) {
        if (!given.option->takesValue) return Wrong(QStringLiteral("%1 takes no value").arg(given.name));
        given.value = word.mid(equals + 1);
    } else if (given.option->takesValue) {
        if (++*index == words.size()) return Wrong(QStringLiteral("%1 needs a value").arg(given.name));
        given.value = words[*index];
    }
    sorted->options.push_back(given);
    return Outcome();
}

Outcome Sort(const QStringList& words, Sorted* sorted) {
    for (int i = 0; i < words.size(); ++i) {
        sorted->plain = sorted->operands.size();
        if (words[i] == QLatin1String("--")) {
            sorted->operands += words.mid(i + 1);
            return Outcome();
        }
        if (!IsOption(words[i]))
            sorted->operands.append(words[i]);
        else if (Outcome outcome = TakeOption(words, &i, sorted); !outcome.IsDone())
            return outcome;
    }
    sorted->plain = sorted->operands.size();
    return Outcome();
}

QString ValueOf(const Sorted& sorted, std::initializer_list<QLatin1String> names, const QString& otherwise) {
    QString value = otherwise;
    for (const Given& given : sorted.options)
        if (std::find(names.begin(), names.end(), given.name) != names.end()) value = given.value;
    return value;
}

/// Where a file is that a profile in \a profilesFile names: beside that, unless it says otherwise.
QString FileOf(const QString& profilesFile, const QString& name) {
    if (name.startsWith(QLatin1String("~/"))) return QDir::home().filePath(name.mid(2));
    return QFileInfo(profilesFile).dir().filePath(name);
}

bool IsFile(const QString& name) {
    return QStringList{QStringLiteral("ca"), QStringLiteral("cert"), QStringLiteral("key"),
                       QStringLiteral("token-file")}
        .contains(name);
}

/// Applies one line of a profile: an option about the server, without its dashes. Of what is a switch the
/// value is "true" or "false".
QString ApplySetting(const QString& file, const Profiles::Setting& setting, Arguments* arguments) {
    const Option* const option = Option::Find(QStringLiteral("--") + setting.name);
    if (option == nullptr || option->belongs != Option::EBelongs::ToServer)
        return QStringLiteral("\"%1\" is not known here").arg(setting.name);
    if (!option->takesValue) {
        if (setting.value == QLatin1String("false")) return QString();
        if (setting.value != QLatin1String("true"))
            return QStringLiteral("%1 is true or false").arg(setting.name);
    }
    const QString value = IsFile(setting.name) ? FileOf(file, setting.value) : setting.value;
    return option->apply(*arguments, value);
}

Outcome ApplyProfile(const Sorted& sorted, const Surroundings& surroundings, Arguments* arguments) {
    const QString file = ValueOf(sorted, {ProfilesOption}, surroundings.profilesFile);
    const QString given = ValueOf(sorted, {ServerOption, LongServerOption}, QString());
    const bool hasAddress = !ValueOf(sorted, {QLatin1String("--connect")}, QString()).isEmpty();
    if (given.isEmpty() && hasAddress) return Outcome();
    Profiles profiles;
    if (const QString error = profiles.Read(file); !error.isEmpty()) return Wrong(error);
    const auto* const settings = profiles.Find(given.isEmpty() ? QString(DefaultProfile) : given);
    if (settings == nullptr && given.isEmpty()) return Outcome();
    if (settings == nullptr) {
        const QString names = profiles.Names();
        return Wrong(QStringLiteral("no server \"%1\" in %2, which has %3")
                         .arg(given, file, names.isEmpty() ? QStringLiteral("none") : names));
    }
    for (const Profiles::Setting& setting : *settings)
        if (const QString error = ApplySetting(file, setting, arguments); !error.isEmpty())
            return Wrong(QStringLiteral("%1:%2: %3").arg(file).arg(setting.line).arg(error));
    return Outcome();
}

Outcome ApplyOptions(const Sorted& sorted, Arguments* arguments) {
    for (const Given& given : sorted.options) {
        const QString error = given.option->apply(*arguments, given.value);
        if (!error.isEmpty()) return Wrong(QStringLiteral("%1: %2").arg(given.name, error));
    }
    return Outcome();
}

Outcome AddPath(const QString& text, Arguments* arguments) {
    PathPattern pattern;
    if (const QString error = pattern.Parse(text, arguments->reading); !error.isEmpty()) return Wrong(error);
    const auto isSame = [&pattern](const PathPattern& known) { return known.Text() == pattern.Text(); };
    auto& patterns = arguments->patterns;
    if (std::none_of(patterns.begin(), patterns.end(), isSame)) patterns.push_back(pattern);
    return Outcome();
}

Outcome TakeTopic(const QStringList& operands, Arguments* arguments) {
    arguments->command = ECommand::Help;
    if (operands.isEmpty()) return Outcome();
    const CommandWord* const topic = FindCommand(operands.first());
    if (topic == nullptr) return Wrong(QStringLiteral("unknown command %1").arg(operands.first()));
    arguments->topic = topic->command;
    return Outcome();
}

/// Takes where to look for stations.
Outcome TakeStations(const QString& text, Arguments* arguments) {
    const bool isTls = text.startsWith(QLatin1String("natss://"));
    if (!isTls && !text.startsWith(QLatin1String("nats://")))
        return Wrong(QStringLiteral("\"%1\" does not begin with nats://").arg(text));
    const QString fault = arguments->stations.Parse(text.mid(text.indexOf(QLatin1String("://")) + 3));
    if (!fault.isEmpty()) return Wrong(QStringLiteral("\"%1\" leads to no stations: %2").arg(text, fault));
    arguments->isNatsEncrypted = isTls || arguments->server.isEncrypted;
    return Outcome();
}

/// Takes the operands of a command that works on paths, the last of which may be a value.
Outcome TakePaths(const CommandWord& word, QStringList operands, Arguments* arguments) {
    const bool hasLines = !arguments->linesFile.isEmpty();
    if (hasLines && !operands.isEmpty())
        return Wrong(QStringLiteral("-f takes the place of paths and value"));
    if (!hasLines && operands.size() < word.fewest)
        return Wrong(QStringLiteral("%1 needs %2").arg(QLatin1String(word.name), QLatin1String(word.needs)));
    if (operands.size() > word.most)
        return Wrong(QStringLiteral("%1: too many arguments").arg(QLatin1String(word.name)));
    if (word.command == ECommand::Stations) return TakeStations(operands.first(), arguments);
    if (word.command == ECommand::Set && !hasLines) arguments->value = operands.takeLast();
    if (word.command == ECommand::List && operands.isEmpty()) operands.append(QStringLiteral("/"));
    for (const QString& operand : operands)
        if (Outcome outcome = AddPath(operand, arguments); !outcome.IsDone()) return outcome;
    return Outcome();
}

Outcome TakeOperands(const Sorted& sorted, Arguments* arguments) {
    const QStringList& operands = sorted.operands;
    const CommandWord* const word = FindCommand(operands.first());
    if (word->command == ECommand::Help) return TakeTopic(operands.mid(1), arguments);
    arguments->command = word->command;
    arguments->isValueFromInput = word->command == ECommand::Set && sorted.plain == operands.size() &&
                                  operands.last() == QLatin1String("-");
    return TakePaths(*word, operands.mid(1), arguments);
}

/// Whether there is a command, and the options are some of its own.
Outcome CheckCommand(const Sorted& sorted) {
    if (sorted.operands.isEmpty()) return Wrong(QStringLiteral("no command"));
    const CommandWord* const word = FindCommand(sorted.operands.first());
    if (word == nullptr) return Wrong(QStringLiteral("unknown command %1").arg(sorted.operands.first()));
    for (const Given& given : sorted.options)
        if (!given.option->IsFor(word->command))
            return Wrong(QStringLiteral("%1 belongs to %2").arg(given.name, given.option->Commands()));
    return Outcome();
}

/// Asking for help, or for the version, needs nothing else to be right.
bool IsAskedForHelp(const Sorted& sorted, Arguments* arguments) {
    for (const Given& given : sorted.options) {
        Arguments asked;
        if (given.option->takesValue) continue;
        given.option->apply(asked, QString());
        if (asked.command == ECommand::None) continue;
        arguments->command = asked.command;
        const CommandWord* const topic =
            sorted.operands.isEmpty() ? nullptr : FindCommand(sorted.operands.first());
        if (topic != nullptr) arguments->topic = topic->command;
        return true;
    }
    return false;
}

Outcome ParseWords(const QStringList& words, const Surroundings& surroundings, Arguments* arguments) {
    Sorted sorted;
    Outcome outcome = Sort(words, &sorted);
    if (!outcome.IsDone() || IsAskedForHelp(sorted, arguments)) return outcome;
    outcome = CheckCommand(sorted);
    const bool isHelp = sorted.operands.value(0) == QLatin1String("help");
    if (outcome.IsDone() && !isHelp) outcome = ApplyProfile(sorted, surroundings, arguments);
    if (outcome.IsDone()) outcome = ApplyOptions(sorted, arguments);
    if (outcome.IsDone()) outcome = TakeOperands(sorted, arguments);
    if (outcome.IsDone() &&
        arguments->client.certificateFile.isEmpty() != arguments->client.privateKeyFile.isEmpty())
        outcome = Wrong(QStringLiteral("--cert and --key belong together"));
    return outcome;
}

}  // namespace

QStringList CommandNames() {
    QStringList names;
    for (const CommandWord& word : Commands)
        names += QLatin1String(word.name);
    return names;
}

Session::ERetry Arguments::Retry() const {
    if (!isRetrying) return Session::ERetry::Never;
    const bool isLasting = command == ECommand::Watch || command == ECommand::Hold || condition;
    return isLasting ? Session::ERetry::Always : Session::ERetry::AfterLoss;
}

Outcome ParseArguments(const QStringList& words, const Surroundings& surroundings, Arguments* arguments) {
    *arguments = Arguments();
    arguments->client.token = surroundings.token;
    Outcome outcome = ParseWords(words, surroundings, arguments);
    outcome.message = safetext::Escaped(outcome.message);
    arguments->client.connectTimeout = arguments->Timeout();
    return outcome;
}

}  // namespace mctree
