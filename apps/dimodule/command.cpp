// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/command.h>

#include <apps/dimodule/inputs.h>

#include <algorithm>
#include <iterator>

namespace dimodule {

namespace {

constexpr int MaxLineLength = 1000;
constexpr int MaxModules = 1000;

using EAction = Command::EAction;

QString NotUnderstood(const QString& word) {
    return QStringLiteral("'%1' is not understood").arg(word);
}

/// Takes "M/" off the front of \a word. False if M is no module.
bool TakeModule(QString* word, int* module) {
    const int slash = word->indexOf(QLatin1Char('/'));
    if (slash == -1) return true;
    bool isNumber = false;
    *module = word->left(slash).toInt(&isNumber);
    *word = word->mid(slash + 1);
    return isNumber && *module >= 1 && *module <= MaxModules;
}

/// The first of \a words with its module taken off; the others may name no module.
QString TakeModuleOfFirst(QStringList* words, Command* command) {
    if (words->isEmpty()) return QStringLiteral("there is something missing");
    const QString first = words->first();
    if (!TakeModule(&words->first(), &command->module)) return NotUnderstood(first);
    return QString();
}

QString ParseInputs(QStringList words, Command* command) {
    QString error = TakeModuleOfFirst(&words, command);
    if (!error.isEmpty()) return error;
    for (const QString& word : words) {
        bool isNumber = false;
        const int input = word.toInt(&isNumber);
        if (word == QLatin1String("all"))
            command->inputs = 0xFFFFFFFFu;
        else if (!isNumber || input < 0 || input >= Inputs::MaxCount)
            return QStringLiteral("'%1' is no input from 0 to %2").arg(word).arg(Inputs::MaxCount - 1);
        else
            command->inputs |= 1u << input;
    }
    return QString();
}

QString ParseStates(QStringList words, Command* command) {
    QString error = TakeModuleOfFirst(&words, command);
    if (!error.isEmpty()) return error;
    bool isNumber = false;
    command->inputs = words[0].toUInt(&isNumber, 0);
    if (!isNumber) return QStringLiteral("'%1' is no number, such as 4095 or 0xFFF").arg(words[0]);
    return words.size() > 1 ? NotUnderstood(words[1]) : QString();
}

QString ParseFault(QStringList words, Command* command) {
    QString error = TakeModuleOfFirst(&words, command);
    return error.isEmpty() ? Fault::Parse(words, &command->fault) : error;
}

QString ParseWait(QStringList words, Command* command) {
    bool isNumber = false;
    command->time = std::chrono::milliseconds(words.value(0).toInt(&isNumber));
    if (!isNumber || command->time < command->time.zero() || command->time > Command::MaxWait)
        return QStringLiteral("'%1' is no number of ms from 0 to %2")
            .arg(words.value(0))
            .arg(std::chrono::milliseconds(Command::MaxWait).count());
    return words.size() > 1 ? NotUnderstood(words[1]) : QString();
}

QString ParseNothing(QStringList words, Command*) {
    return words.isEmpty() ? QString() : NotUnderstood(words[0]);
}

struct Verb {
    const char* word;
    EAction action;
    QString (*parse)(QStringList words, Command* command);
};

// clang-format off
constexpr Verb Verbs[] = {
    {"key",     EAction::Key,     ParseInputs},
    {"release", EAction::Release, ParseInputs},
    {"states",  EAction::States,  ParseStates},
    {"fault",   EAction::Fault,   ParseFault},
    {"show",    EAction::Show,    ParseNothing},
    {"wait",    EAction::Wait,    ParseWait},
    {"repeat",  EAction::Repeat,  ParseNothing},
    {"quit",    EAction::Quit,    ParseNothing},
};
// clang-format on

}  // namespace

QString Command::Parse(const QString& line, Command* command) {
    if (line.size() > MaxLineLength) return QStringLiteral("the line is too long");
    QStringList words = line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    Command parsed;
    QString error;
    if (!words.isEmpty() && !words[0].startsWith(QLatin1Char('#'))) {
        const QString word = words.takeFirst();
        const auto* const verb = std::find_if(std::begin(Verbs), std::end(Verbs),
                                              [&](const Verb& v) { return word == QLatin1String(v.word); });
        if (verb == std::end(Verbs)) return NotUnderstood(word);
        parsed.action = verb->action;
        error = verb->parse(words, &parsed);
    }
    if (error.isEmpty()) *command = parsed;
    return error;
}

}  // namespace dimodule
