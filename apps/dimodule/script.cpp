// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/script.h>

#include <platform/config/textfile.h>

namespace dimodule {

bool Script::Load(const QString& path, QString* error) {
    QStringList lines;
    if (!TextFile::ReadLines(path, &lines, error)) return false;
    return Parse(lines.join(QLatin1Char('\n')).toUtf8(), path, error);
}

bool Script::Parse(const QByteArray& text, const QString& name, QString* error) {
    QStringList lines;
    if (!TextFile::SplitLines(text, name, &lines, error)) return false;
    std::vector<Command> parsed;
    bool hasEnded = false;
    bool hasWaited = false;
    for (int i = 0; i < lines.size(); ++i) {
        Command command;
        QString reason = Command::Parse(lines[i], &command);
        if (reason.isEmpty() && command.action == Command::EAction::None) continue;
        if (reason.isEmpty() && hasEnded) reason = QStringLiteral("nothing comes after 'repeat'");
        if (reason.isEmpty() && parsed.size() >= std::size_t(MaxCommands))
            reason = QStringLiteral("there are more than %1 commands").arg(MaxCommands);
        hasWaited =
            hasWaited || (command.action == Command::EAction::Wait && command.time > command.time.zero());
        hasEnded = command.action == Command::EAction::Repeat;
        if (reason.isEmpty() && hasEnded && !hasWaited)
            reason = QStringLiteral("what is repeated has to wait somewhere");
        if (!reason.isEmpty()) {
            *error = QStringLiteral("%1:%2: %3").arg(name).arg(i + 1).arg(reason);
            return false;
        }
        parsed.push_back(command);
    }
    commands = parsed;
    return true;
}

}  // namespace dimodule
